#pragma once

#include <string>
#include <vector>

#include "Console.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch check: what is wrong with each file, a line a finding. Gives the worst status of all files.
struct CheckCommand {
    std::vector<std::string> files;

    ExitStatus Run(const Console& console) const;
};

}  // namespace zel
