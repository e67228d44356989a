#pragma once

#include "Console.h"
#include "Inputs.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch list: the definitions of all files in one table. Gives the worst status of all files.
struct ListCommand {
    Inputs files;
    bool csv = false;
    bool tsv = false;

    ExitStatus Run(const Console& console) const;
};

}  // namespace zel
