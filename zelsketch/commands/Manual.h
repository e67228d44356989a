#pragma once

#include <ostream>
#include <string>

#include <CLI/CLI.hpp>

namespace zel {

// How the JSON of a file tells what plain values cannot.
std::string JsonFooter();
// The texts that the help shows behind the options: examples and exit statuses.
std::string HelpFooter();

// The manual page of the command line that `app` describes, in the words of its help.
void PrintManual(const CLI::App& app, std::ostream& out);

}  // namespace zel
