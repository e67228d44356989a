#pragma once

#include <cstdint>
#include <string>

#include "Console.h"
#include "Inputs.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch convert: the same content as a file of another version, and a list of what that version cannot
// hold; of one file, or of many into a folder. Refuses damaged files, unless what can be read of them is
// asked for. Never overwrites.
struct ConvertCommand {
    Inputs files;  // without `out`, the last one is that
    std::string out;
    std::int32_t version = 0;
    bool salvage = false;

    ExitStatus Run(const Console& console) const;

private:
    ExitStatus Convert(const Console& console, const std::string& file, const std::string& target) const;
};

}  // namespace zel
