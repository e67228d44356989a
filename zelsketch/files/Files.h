#pragma once

#include <string>

namespace zel {

// Whole files. All of it throws Failure (kUnusable) with the path and the reason.

std::string ReadFile(const std::string& path);

enum class Overwrite { kRefuse, kReplace };
// To be called before the work: fails where nothing may be overwritten, or what stands there is no regular
// file.
void ExpectWritable(const std::string& path, Overwrite overwrite);
// Writes beside `path` and renames, so that what stood there is lost only when all bytes are on the disk.
// With kRefuse nothing is ever lost, not even a file that another program makes at the last moment.
void WriteFile(const std::string& path, const std::string& bytes, Overwrite overwrite);

}  // namespace zel
