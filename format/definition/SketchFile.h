#pragma once

#include <vector>

#include "DefinitionList.h"
#include "DefinitionRecord.h"
#include "FileHeader.h"
#include "zel/list/MarkerFraming.h"
#include "zel/list/Nested.h"
#include "zel/record/LittleEndian.h"
#include "zel/record/Record.h"
#include "zel/record/Writer.h"

namespace zel {

// A whole file: the header, two fields that later versions added, and the area definitions. Owns them all.
// A version that is known has all of it; any other is a header alone. A new one is an empty file of
// kVersionOfNewFiles.
class SketchFile : public Record {
public:
    // Versions 0 to this one are known: whatever names a version derives it from these constants.
    static constexpr std::int32_t kNewestVersion = 5;
    static constexpr std::int32_t kVersionOfNewFiles = 5;
    // Version 0 is loaded, but never saved by those who work on files for a user.
    static constexpr std::int32_t kOldestSavedVersion = 1;

    SketchFile() { SetVersion(kVersionOfNewFiles); }
    SketchFile(const SketchFile& other) : SketchFile() { *this = other; }
    // Copies all but FileFlags, which stay those of this file.
    SketchFile& operator=(const SketchFile& other);

    void SetVersion(std::int32_t version) override;
    // Takes the version from the header; the caller judges by it. What the version lacks keeps its value.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;
    // Sets aside what the next Write needs, which then allocates nothing unless a definition is added.
    void PrepareWrite() { writePath_.reserve(DepthOf(definitions)); }
    // Exchanges everything, FileFlags included.
    void Swap(SketchFile& other) noexcept;

    // Whether a file of this version has more than a header.
    bool HasDefinitions() const { return GetVersion() >= 0 && GetVersion() <= kNewestVersion; }
    // The fields between the header and the definitions, in the direction of the archive.
    template <class Archive>
    void Trailer(Archive&& archive) {
        archive.Since(4, DefinitionType, "DefinitionType");
        archive.Since(5, FileFlags, "FileFlags");
    }

    FileHeader header;
    std::uint8_t DefinitionType = 0;
    LittleEndian<std::uint32_t> FileFlags{0};
    DefinitionList definitions;

private:
    std::vector<MarkerCursor<Writer, DefinitionList>> writePath_;
};

}  // namespace zel
