#pragma once

#include "DefinitionList.h"
#include "FileHeader.h"
#include "zel/record/LittleEndian.h"
#include "zel/record/Record.h"

namespace zel {

// A whole file: the header, two fields that later versions added, and the area definitions. Owns them all.
// Files of versions 0 to 5 have all of it; any other version is a header alone. A new one is an empty file of
// version 5.
class SketchFile : public Record {
public:
    static constexpr std::int32_t kNewestVersion = 5;

    SketchFile() { SetVersion(kNewestVersion); }
    SketchFile(const SketchFile& other) : SketchFile() { *this = other; }
    // Copies all but FileFlags, which stay those of this file.
    SketchFile& operator=(const SketchFile& other);

    void SetVersion(std::int32_t version) override;
    // Takes the version from the header; the caller judges by it. What the version lacks keeps its value.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;

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
};

}  // namespace zel
