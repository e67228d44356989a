#include <cstring>
#include <list>
#include <string>

#include "DefinitionFile.h"
#include "Measure.h"

namespace zel {
namespace {

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
    RegisterFile<SketchFile>("definitions", MakeDefinitionFile, ParseFile);
    return true;
}();

}  // namespace
}  // namespace zel
