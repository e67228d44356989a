#pragma once

#include <algorithm>
#include <cstring>
#include <sstream>
#include <string>
#include <string_view>

#include "zel/definition/DefinitionRecord.h"
#include "zel/definition/FileHeader.h"
#include "zel/list/Nested.h"
#include "zel/definition/SketchFile.h"

namespace zel {

// What a reader makes of a header's mandatory part: its version, and Flags with those implied.
inline FileHeader AsRead(const HeaderImage& image) {
    std::istringstream mandatory(
        std::string(reinterpret_cast<const char*>(&image), FileHeader::kMandatorySize));
    FileHeader header;
    header.Read(mandatory);
    return header;
}

// Flags as a file has them and as a reader takes them.
struct FlagsOfFile {
    explicit FlagsOfFile(std::string_view file) {
        HeaderImage image{};
        std::memcpy(&image, file.data(), std::min(file.size(), FileHeader::kMandatorySize));
        stored = image.Flags;
        asRead = AsRead(image).image.Flags;
    }
    std::uint32_t stored;
    std::uint32_t asRead;
};

// Takes an archive through a whole file, to any depth of nesting. The archive gets each field with its name
// by Field or Since, BeginHeader and EndHeader around the header, SetVersion with the file's version, and has
// a Cursor for lists as WalkNested asks for. With `asWritten` the header has the sections of its stored Flags
// alone.
template <class Archive>
void WalkFile(Archive& archive, bool asWritten = false) {
    SketchFile file;
    HeaderImage& image = file.header.image;
    archive.BeginHeader();
    image.EachMandatoryField(archive);
    FileHeader header = AsRead(image);
    if (asWritten) header.image.Flags = image.Flags;
    header.OptionalSections(archive);
    archive.EndHeader();

    file.SetVersion(header.GetVersion());
    if (!file.HasDefinitions()) return;
    archive.SetVersion(file.GetVersion());
    file.Trailer(archive);
    WalkNested<typename Archive::Cursor>(archive, file.definitions, "Definitions");
}

}  // namespace zel
