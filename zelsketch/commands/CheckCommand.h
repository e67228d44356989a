#pragma once

#include "Console.h"
#include "Inputs.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch check: what is wrong with each file, a line a finding. Gives the worst status of all files.
struct CheckCommand {
    Inputs files;

    ExitStatus Run(const Console& console) const;
};

}  // namespace zel
