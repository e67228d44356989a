#pragma once

#include "Console.h"

namespace zel {

// Runs zelsketch as its arguments say and gives the exit status. Errors are one line on console.error.
int RunCommandLine(int argc, const char* const* argv, const Console& console);

}  // namespace zel
