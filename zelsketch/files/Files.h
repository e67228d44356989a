#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>

namespace zel {

// Whole files. All of it throws Failure (kUnusable) with the path and the reason.

// Beyond this a file is refused, before it takes all memory: 1 GiB, 256 MiB in a 32-bit program.
constexpr std::uint64_t kLargestFile = std::uint64_t{1} << (sizeof(std::size_t) > 4 ? 30 : 28);
// The same of a JSON text, which is several times the size of the file that it tells of.
constexpr std::uint64_t kLargestText = kLargestFile * (sizeof(std::size_t) > 4 ? 8 : 2);

std::string ReadFile(const std::string& path, std::uint64_t largest = kLargestFile);

// What a stream still has; `name` is what messages call it.
std::string ReadStream(std::istream& stream, const std::string& name, std::uint64_t largest);

// What may be lost where a file is written: nothing, a file that stands there, or even a read-only one.
enum class Overwrite { kRefuse, kReplace, kForce };
// To be called before the work: fails where WriteFile would.
void ExpectWritable(const std::string& path, Overwrite overwrite);
// Writes a file beside `path`, reads it back and only then gives it that name, in one step: at any moment
// `path` is what it was, or all of the new file. With kRefuse nothing is ever lost, not even a file that
// another program makes at the last moment.
void WriteFile(const std::string& path, const std::string& bytes, Overwrite overwrite);
// The same for a file that was read as `old`; fails where it is another by now. With `keepsBackup` the old
// file stays as "PATH.bak", in place of an older one.
void ReplaceFile(const std::string& path, const std::string& old, const std::string& bytes,
                 Overwrite overwrite, bool keepsBackup);

bool IsFolder(const std::string& path);
std::string PathIn(const std::string& folder, const std::string& below);
// Makes the folders that lead to a file.
void MakeFolderOf(const std::string& path);
// The file that a symbolic link leads to in the end; any other path as it is.
std::string BehindLinks(const std::string& path);
// Whether both are one file, whatever their names.
bool IsSameFile(const std::string& a, const std::string& b);

}  // namespace zel
