#pragma once

#include <string>
#include <vector>

#include "Console.h"

namespace zel {

// Runs zelsketch as its arguments (without the program's name) say and gives the exit status. Errors are one
// line on console.error.
int RunCommandLine(std::vector<std::string> arguments, const Console& console);

}  // namespace zel
