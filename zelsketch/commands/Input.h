#pragma once

#include <string>

#include "Console.h"
#include "zel/files/Files.h"

namespace zel {

// A file's content; that of the standard input for "-".
std::string ReadInput(const Console& console, const std::string& path, std::uint64_t largest = kLargestFile);

// Says where reading a damaged file could go on. No word of any other file.
void TellOfSalvage(const Console& console, const std::string& path, const std::string& bytes);

// Where a command's result goes: a file, or the standard output for "-". What the command has to say then
// goes to the standard error.
class Output {
public:
    // Fails before the work where Write would.
    Output(const Console& console, const std::string& path, Overwrite overwrite);

    // One line of what the command has to say.
    void Report(const std::string& line) const;
    // Only when all of that has arrived: nothing is written whose losses nobody heard of.
    void Write(const std::string& bytes) const;

private:
    const Console& console_;
    const std::string path_;
    const Overwrite overwrite_;
};

}  // namespace zel
