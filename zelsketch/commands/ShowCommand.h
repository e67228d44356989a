#pragma once

#include <string>

#include "Console.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch show: what is in a file, as a page, as JSON or byte by byte.
struct ShowCommand {
    std::string file;
    bool json = false;
    bool hex = false;

    ExitStatus Run(const Console& console) const;
};

}  // namespace zel
