#pragma once

#include <string>

#include "zel/definition/SketchFile.h"

namespace zel {

// The versions of files that are worked on, in words: "0 to 9".
inline std::string LoadedVersions() { return "0 to " + std::to_string(SketchFile::kNewestVersion); }
inline std::string SavedVersions() {
    return std::to_string(SketchFile::kOldestSavedVersion) + " to " +
           std::to_string(SketchFile::kNewestVersion);
}

}  // namespace zel
