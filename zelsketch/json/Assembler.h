#pragma once

#include <cstring>
#include <string>
#include <string_view>

#include "zel/definition/DefinitionRecord.h"
#include "zel/survey/Field.h"
#include "JsonTree.h"

namespace zel {

// Makes the bytes of a file of the JSON that JsonWriter writes. Fields that the JSON leaves out have the
// value that they have in a new file; a key that the file has no place for is an error.
class Assembler {
public:
    static constexpr bool kReads = true;
    class Cursor;

    // Throws Failure (kDamaged) with line, column and what was expected.
    static std::string Assemble(std::string_view json);

    // The calls of an archive (FileWalk.h).
    void BeginHeader();
    void EndHeader();
    void SetVersion(std::int32_t version) { version_ = version; }

    template <class T>
    void Field(T& field, const char* name) {
        char bytes[sizeof field];
        std::memcpy(bytes, &field, sizeof field);
        Fill(FormOf(field).kind, name, bytes, sizeof field);
        std::memcpy(&field, bytes, sizeof field);
        out_.append(bytes, sizeof field);
    }
    void Field(ShortString&, const char* name);
    void Field(DefinitionBlock& block, const char* name);

    template <class T>
    void Since(std::int32_t introduced, T& field, const char* name) {
        if (version_ >= introduced) Field(field, name);
    }

private:
    // What a text's JSON says of its field.
    struct TextParts {
        std::string text;
        std::int64_t first = 6;  // the count or the tag
        std::string behind;
        bool isPlain = true;  // the text alone
    };

    explicit Assembler(std::string_view json) : tree_(json) {}

    void Finish();
    JsonNode* OpenList();
    void StartDefinition(JsonNode& node);
    void Expect(const JsonNode& node, JsonNode::Type type, const char* what) const;
    void RefuseUnused(const JsonNode& object);

    void Fill(FieldKind kind, const char* name, char* bytes, std::size_t width);
    std::int64_t Integer(const JsonNode& node, std::int64_t least, std::int64_t most) const;
    std::uint64_t DoubleBits(const JsonNode& node) const;
    TextParts Parts(FieldKind kind, JsonNode& node);
    void FillText(FieldKind kind, JsonNode& node, char* bytes, std::size_t width);
    std::string Encoded(const JsonNode& node) const;
    std::string FromHex(const JsonNode& node) const;

    JsonTree tree_;
    std::string out_;
    JsonNode* object_ = nullptr;  // whose members the next fields are
    std::int32_t version_ = 0;
    bool inList_ = false;
    std::size_t definitionStart_ = 0;
    DefinitionRecord record_;
};

}  // namespace zel
