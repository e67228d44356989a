#pragma once

#include <string>
#include <vector>

#include "Console.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch get: the values at some paths, a line each.
struct GetCommand {
    std::string file;
    std::vector<std::string> paths;
    bool all = false;

    ExitStatus Run(const Console& console) const;
};

}  // namespace zel
