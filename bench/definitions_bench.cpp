// Definition files of version 5: one in ten top-level definitions has two members.

#include <cstring>
#include <list>
#include <memory>
#include <string>

#include "DefinitionRecord.h"
#include "Measure.h"
#include "SketchFile.h"

namespace zel {
namespace {

void Fill(DefinitionRecord& record, std::int64_t number) {
    record.AreaCode.text = "GLA" + std::to_string(number % 10);
    record.block.Multiplier = 1.0;
    record.block.AreaName.Put("Floor " + std::to_string(number));
    record.block.SegmentStyle.Put("SOLID");
    if (number % 7 == 0) record.SubtractAreaCode.text = "GAR";
}

std::unique_ptr<SketchFile> MakeFile(std::int64_t records) {
    auto file = std::make_unique<SketchFile>();
    for (std::int64_t i = 0; i < records; ++i) {
        DefinitionRecord& record = file->definitions.Append();
        Fill(record, i);
        for (std::int64_t member = 0; i % 10 == 0 && member < 2; ++member)
            Fill(record.Members.Append(), i + member);
    }
    return file;
}

struct PlainDefinition {
    std::string areaCode;
    DefinitionBlock block;
    std::uint8_t hidden;
    std::string subtractAreaCode;
    std::list<PlainDefinition> members;
};

void ParseCode(const char*& at, std::string& code) {
    const auto length = static_cast<unsigned char>(at[1]);
    code.assign(at + 2, length);
    at += 2 + length;
}

void ParseList(const char*& at, std::list<PlainDefinition>& definitions) {
    for (++at; *at != 0;) {
        PlainDefinition& definition = definitions.emplace_back();
        ParseCode(at, definition.areaCode);
        std::memcpy(&definition.block, at, sizeof definition.block);
        at += sizeof definition.block;
        definition.hidden = static_cast<std::uint8_t>(*at++);
        ParseCode(at, definition.subtractAreaCode);
        ParseList(at, definition.members);
    }
    ++at;
}

std::list<PlainDefinition> ParseFile(const std::string& bytes) {
    constexpr std::size_t kBeforeList = sizeof(HeaderImage) + 1 + 4;
    const char* at = bytes.data() + kBeforeList;
    std::list<PlainDefinition> definitions;
    ParseList(at, definitions);
    return definitions;
}

const bool registered = [] {
    RegisterFile<SketchFile>("definitions", MakeFile, ParseFile);
    return true;
}();

}  // namespace
}  // namespace zel
