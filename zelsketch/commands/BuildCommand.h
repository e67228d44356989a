#pragma once

#include <string>

#include "Console.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch build: the file that a JSON text describes. An existing file is replaced.
struct BuildCommand {
    std::string json;
    std::string out;

    ExitStatus Run(const Console& console) const;
};

}  // namespace zel
