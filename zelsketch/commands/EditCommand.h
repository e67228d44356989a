#pragma once

#include <string>
#include <vector>

#include "Console.h"
#include "zel/edit/Editor.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch set, add, remove and move: changes a file by the paths of its values, in place unless another
// file is named, and says what has changed. In place, the old file stays beside it.
struct EditCommand {
    std::string file;
    std::string place;                   // add: where; move: what
    std::vector<std::string> arguments;  // set: PATH=VALUE; add: FIELD=VALUE; remove: PATH; move: where to
    std::string out;
    bool all = false;
    bool dropsBackup = false;
    bool force = false;

    ExitStatus Set(const Console& console) const;
    ExitStatus Add(const Console& console) const;
    ExitStatus Remove(const Console& console) const;
    ExitStatus Move(const Console& console) const;

private:
    template <class Job>
    ExitStatus Run(const Console& console, Job job) const;
};

}  // namespace zel
