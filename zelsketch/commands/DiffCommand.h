#pragma once

#include <string>
#include <vector>

#include "Console.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch diff: what makes an old file a new one. Ends with 0 where nothing does, else with 1; for git,
// which gives its own arguments and takes anything else for a failure, always with 0.
struct DiffCommand {
    std::vector<std::string> files;
    bool json = false;
    bool git = false;

    ExitStatus Run(const Console& console) const;

private:
    ExitStatus RunForGit(const Console& console) const;
    ExitStatus Compare(const Console& console, const std::string& oldFile, const std::string& newFile) const;
};

}  // namespace zel
