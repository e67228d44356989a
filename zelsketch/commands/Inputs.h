#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Console.h"
#include "zel/text/Failure.h"

namespace zel {

// By its signature, or a name that ends in ".zel".
bool LooksLikeDefinitionFile(const std::string& path);

// The files that a command works on: as they were named, and those in folders.
struct Inputs {
    struct File {
        std::string path;
        std::string
            below;  // the path below the folder that was named; the name of a file that was named itself
    };

    // Those of a folder are sorted. Taken are those that look like definition files; how many others there
    // are is said. Throws Failure for a folder that is not to be gone through.
    std::vector<File> Files(const Console& console) const;
    // Runs a job on each, whatever becomes of the others. Gives the worst status.
    using Job = std::function<ExitStatus(const File&)>;
    static ExitStatus ForEach(const Console& console, const std::vector<File>& files, const Job& job);

    std::vector<std::string> paths;
    bool recursive = false;
};

}  // namespace zel
