#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "zel/commands/CommandLine.h"
#include "zel/files/Platform.h"

namespace {

bool WantsColour() {
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value ? value : "");
    };
    return variable("NO_COLOR").empty() && variable("TERM") != "dumb";
}

}  // namespace

int main(int argc, char** argv) {
    std::ios_base::sync_with_stdio(false);
    zel::PrepareInput(stdin);
    const bool outPrepareOutput = zel::PrepareOutput(stdout), errorPrepareOutput = zel::PrepareOutput(stderr);
    const zel::Console console{std::cin,           std::cout,
                               std::cerr,          outPrepareOutput && WantsColour(),
                               errorPrepareOutput, outPrepareOutput};
    return zel::RunCommandLine(zel::Arguments(argc, argv), console);
}
