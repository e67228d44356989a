#pragma once

#include <ostream>
#include <string>

#include <CLI/CLI.hpp>

namespace zel {

// The help of the program or of one of its commands, for a terminal of 80 columns.
std::string HelpOf(const CLI::App& app);

// The manual page of the command line that `app` describes, in the words of its help.
void PrintManual(const CLI::App& app, std::ostream& out);

// A script for bash that completes its commands and options, and file names behind them.
void PrintCompletion(const CLI::App& app, std::ostream& out);

}  // namespace zel
