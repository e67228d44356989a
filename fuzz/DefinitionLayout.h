#pragma once

#include "zel/definition/DefinitionRecord.h"
#include "zel/definition/SketchFile.h"
#include "Layout.h"

namespace zel {

// The definition file by tables (Layout.h).

template <std::uint32_t kFlag>
bool HasFlag(const HeaderImage& image) {
    return image.Flags & kFlag;
}

const Row<HeaderImage> kHeader[] = {
    {0, kOn, Form::kCounted, 11, At<&HeaderImage::Signature>},
    {0, kOn, Form::kRaw, 1, At<&HeaderImage::TarnVersion>},
    {0, kOn, Form::kFlags, 4, At<&HeaderImage::Flags>},
    {0, kOn, Form::kRaw, 1, At<&HeaderImage::Type>},
    {0, kOn, Form::kRaw, 1, At<&HeaderImage::FileVersion>},
    {0, kOn, Form::kRaw, 4, At<&HeaderImage::CreationDate>},
    {0, kOn, Form::kRaw, 4, At<&HeaderImage::CreationTime>},
    {0, kOn, Form::kRaw, 10, At<&HeaderImage::CreatedBy>},
    {0, kOn, Form::kRaw, 4, At<&HeaderImage::ModifiedDate>},
    {0, kOn, Form::kRaw, 4, At<&HeaderImage::ModifiedTime>},
    {0, kOn, Form::kRaw, 10, At<&HeaderImage::LastModifiedBy>},
    {0, kOn, Form::kCounted, 11, At<&HeaderImage::ProgramVersionSignature>, &HasFlag<0x10>},
    {0, kOn, Form::kCounted, 21, At<&HeaderImage::CreatedByVersion>, &HasFlag<0x100>},
    {0, kOn, Form::kCounted, 21, At<&HeaderImage::ModifiedByVersion>, &HasFlag<0x100>},
};
const Row<SketchFile> kTrailer[] = {
    {4, kOn, Form::kRaw, 1, At<&SketchFile::DefinitionType>},
    {5, kOn, Form::kRaw, 4, At<&SketchFile::FileFlags>},
};
const Row<DefinitionRecord> kAreaCode[] = {{0, kOn, Form::kShort, 0, At<&DefinitionRecord::AreaCode>}};
const Row<DefinitionBlock> kBlock[] = {
    {0, kOn, Form::kRaw, 8, At<&DefinitionBlock::Multiplier>},
    {0, kOn, Form::kRaw, 1, At<&DefinitionBlock::CalcType>},
    {0, kOn, Form::kCounted, 21, At<&DefinitionBlock::AreaName>},
    {0, kOn, Form::kCounted, 21, At<&DefinitionBlock::AreaDescription>},
    {0, kOn, Form::kRaw, 8, At<&DefinitionBlock::WallWidth>},
    {0, kOn, Form::kRaw, 8, At<&DefinitionBlock::WallHeight>},
    {0, kOn, Form::kCounted, 33, At<&DefinitionBlock::SegmentStyle>},
    {0, kOn, Form::kRaw, 2, At<&DefinitionBlock::FillPattern>},
    {0, kOn, Form::kRaw, 2, At<&DefinitionBlock::LineColor>},
    {0, kOn, Form::kRaw, 2, At<&DefinitionBlock::FillColor>},
    {0, kOn, Form::kRaw, 1, At<&DefinitionBlock::PostDescription>},
    {0, kOn, Form::kRaw, 1, At<&DefinitionBlock::PostArea>},
    {0, kOn, Form::kRaw, 1, At<&DefinitionBlock::DimensionType>},
};
const Row<DefinitionRecord> kBehindBlock[] = {
    {2, kOn, Form::kRaw, 1, At<&DefinitionRecord::Hidden>},
    {3, kOn, Form::kShort, 0, At<&DefinitionRecord::SubtractAreaCode>},
};

template <class Pass>
void PassDefinitions(Pass& pass, const DefinitionList& list) {
    Check(list.GetVersion() == pass.version, "a list has the version of its file");
    pass.Marked(list, [&pass](const DefinitionRecord& record) {
        Check(record.GetVersion() == pass.version, "a definition has the version of its file");
        pass.Rows(kAreaCode, record, pass.version);
        pass.Rows(kBlock, record.block, pass.version);
        pass.Rows(kBehindBlock, record, pass.version);
        PassDefinitions(pass, record.Members);
    });
}

template <class Pass>
void PassFile(Pass& pass, const SketchFile& file) {
    pass.Rows(kHeader, file.header.image, pass.version);
    Check(file.header.GetVersion() == pass.version && file.header.image.FileVersion == pass.version % 256,
          "a header has the version of its file");
    if (pass.Done() || pass.version > SketchFile::kNewestVersion) return;
    pass.Rows(kTrailer, file, pass.version);
    PassDefinitions(pass, file.definitions);
}

}  // namespace zel
