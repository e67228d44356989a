#pragma once

#include <sstream>
#include <string>

#include "zel/definition/DefinitionRecord.h"
#include "zel/definition/FileHeader.h"
#include "zel/list/Nested.h"
#include "zel/definition/SketchFile.h"

namespace zel {

// The fields of the fixed blocks, one by one, for archives that do not take a block whole.
template <class Archive>
void EachField(Archive& archive, DefinitionBlock& block) {
    archive.Field(block.Multiplier, "Multiplier");
    archive.Field(block.CalcType, "CalcType");
    archive.Field(block.AreaName, "AreaName");
    archive.Field(block.AreaDescription, "AreaDescription");
    archive.Field(block.WallWidth, "WallWidth");
    archive.Field(block.WallHeight, "WallHeight");
    archive.Field(block.SegmentStyle, "SegmentStyle");
    archive.Field(block.FillPattern, "FillPattern");
    archive.Field(block.LineColor, "LineColor");
    archive.Field(block.FillColor, "FillColor");
    archive.Field(block.PostDescription, "PostDescription");
    archive.Field(block.PostArea, "PostArea");
    archive.Field(block.DimensionType, "DimensionType");
}

template <class Archive>
void EachMandatoryField(Archive& archive, HeaderImage& image) {
    archive.Field(image.Signature, "Signature");
    archive.Field(image.TarnVersion, "TarnVersion");
    archive.Field(image.Flags, "Flags");
    archive.Field(image.Type, "Type");
    archive.Field(image.FileVersion, "FileVersion");
    archive.Field(image.CreationDate, "CreationDate");
    archive.Field(image.CreationTime, "CreationTime");
    archive.Field(image.CreatedBy, "CreatedBy");
    archive.Field(image.ModifiedDate, "ModifiedDate");
    archive.Field(image.ModifiedTime, "ModifiedTime");
    archive.Field(image.LastModifiedBy, "LastModifiedBy");
}

// What a reader makes of a header's mandatory part: its version, and Flags with those implied.
inline FileHeader AsRead(const HeaderImage& image) {
    std::istringstream mandatory(
        std::string(reinterpret_cast<const char*>(&image), FileHeader::kMandatorySize));
    FileHeader header;
    header.Read(mandatory);
    return header;
}

// Takes an archive through a whole file, to any depth of nesting. The archive gets each field with its name
// by Field or Since, BeginHeader and EndHeader around the header, SetVersion with the file's version, and has
// a Cursor for lists as WalkNested asks for. With `asWritten` the header has the sections of its stored Flags
// alone.
template <class Archive>
void WalkFile(Archive& archive, bool asWritten = false) {
    SketchFile file;
    HeaderImage& image = file.header.image;
    archive.BeginHeader();
    EachMandatoryField(archive, image);
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
