#pragma once

#include <cstdint>
#include <string>

#include "Console.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch convert: the same content as a file of another version, and a list of what that version cannot
// hold. Refuses damaged files, unless what can be read of them is asked for. Never overwrites.
struct ConvertCommand {
    std::string file;
    std::string out;
    std::int32_t version = 0;
    bool salvage = false;

    ExitStatus Run(const Console& console) const;
};

}  // namespace zel
