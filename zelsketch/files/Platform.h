#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace zel {

// What the tools need of the system beyond the standard library. Paths are UTF-8 on Windows and elsewhere the
// bytes that the system has for them. What fails gives null or false, and its reason in errno.

// The arguments of main but the first; on Windows whatever their letters, and with the files that a pattern
// stands for.
std::vector<std::string> Arguments(int argc, const char* const* argv);
// Let a stream pass bytes as they are. True of a terminal, which then shows UTF-8 and obeys escape
// sequences.
void PrepareInput(std::FILE* stream);
bool PrepareOutput(std::FILE* stream);

std::FILE* OpenToRead(const std::string& path);
// Refuses a path where anything stands. A private file is for its owner alone.
std::FILE* CreateNew(const std::string& path, bool isPrivate);
// Ends when all that was written is on the disk.
bool Flush(std::FILE* file);

bool MayWrite(const std::string& path);
// Gives a file a new name in the same folder, in one step; without `replaces` only where nothing has that
// name. Gives 0 or the error's number.
int Rename(const std::string& from, const std::string& to, bool replaces);
// Gives `path` the owner and the rights of `model`, as far as the user may.
void CopyRights(const std::string& model, const std::string& path);

}  // namespace zel
