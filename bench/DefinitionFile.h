#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "zel/definition/DefinitionRecord.h"
#include "zel/definition/SketchFile.h"

namespace zel {

inline void Fill(DefinitionRecord& record, std::int64_t number) {
    record.AreaCode.text = "GLA" + std::to_string(number % 10);
    record.block.Multiplier = 1.0;
    record.block.AreaName.Put("Floor " + std::to_string(number));
    record.block.SegmentStyle.Put("SOLID");
    if (number % 7 == 0) record.SubtractAreaCode.text = "GAR";
}

// A new file: one in ten top-level definitions has two members.
inline std::unique_ptr<SketchFile> MakeDefinitionFile(std::int64_t records) {
    auto file = std::make_unique<SketchFile>();
    for (std::int64_t i = 0; i < records; ++i) {
        DefinitionRecord& record = file->definitions.Append();
        Fill(record, i);
        for (std::int64_t member = 0; i % 10 == 0 && member < 2; ++member)
            Fill(record.Members.Append(), i + member);
    }
    return file;
}

}  // namespace zel
