#pragma once

#include <string>

#include "Console.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch build: the file that a JSON text describes. An existing file is replaced, a read-only one only by
// force, the JSON itself never.
struct BuildCommand {
    std::string json;
    std::string out;
    bool force = false;

    ExitStatus Run(const Console& console) const;
};

}  // namespace zel
