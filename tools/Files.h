#pragma once

#include <string>

namespace zel {

// Whole files. All of it throws Failure (kUnusable) with the path and the reason.

std::string ReadFile(const std::string& path);

enum class Overwrite { kRefuse, kReplace };
// Fails early, before the work, where WriteFile would refuse.
void ExpectWritable(const std::string& path, Overwrite overwrite);
// Writes beside `path` and renames, so that what stood there is lost only when all bytes are on the disk.
void WriteFile(const std::string& path, const std::string& bytes, Overwrite overwrite);

}  // namespace zel
