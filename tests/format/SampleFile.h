#pragma once

#include "DefinitionRecord.h"
#include "SketchFile.h"

namespace zel {

// A file with every field in use: two definitions, the first with two members, one of which has an empty one.
inline SketchFile SampleFile(std::int32_t version) {
    SketchFile file;
    file.SetVersion(version);
    file.DefinitionType = 2;
    file.FileFlags = 0x01020304;
    file.header.image.CreatedBy.Put("Someone");
    const auto fill = [](DefinitionRecord& record, const char* code) {
        record.AreaCode.text = code;
        record.block.Multiplier = 1.5;
        record.block.AreaName.Put("First Floor");
        record.block.DimensionType = 3;
        record.Hidden = 1;
        record.SubtractAreaCode.text = "GAR, longer than a string holds in place";
    };
    DefinitionRecord& first = file.definitions.Append();
    fill(first, "GLA1");
    fill(first.Members.Append(), "GBA0");
    fill(first.Members.Append(), "BSMT");
    first.Members.Elements().front().Members.Append();
    fill(file.definitions.Append(), "SITE");
    return file;
}

}  // namespace zel
