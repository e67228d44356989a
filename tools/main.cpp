#include <cstdlib>
#include <iostream>

#include <unistd.h>

#include "CommandLine.h"

namespace {

bool HasColour() {
    const char* off = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    const bool isDumb = !terminal || std::string(terminal) == "dumb";
    return isatty(STDOUT_FILENO) && !(off && *off) && !isDumb;
}

}  // namespace

int main(int argc, char** argv) {
    std::ios_base::sync_with_stdio(false);
    const zel::Console console{std::cout, std::cerr, HasColour(), isatty(STDERR_FILENO) != 0};
    return zel::RunCommandLine(argc, argv, console);
}
