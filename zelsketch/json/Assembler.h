#pragma once

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "zel/definition/DefinitionRecord.h"
#include "zel/survey/Field.h"
#include "zel/text/LongWork.h"
#include "JsonText.h"

namespace zel {

// Makes the bytes of a file of the JSON that JsonWriter writes. Fields that the JSON leaves out have the
// value that they have in a new file; a key that the file has no place for is an error.
class Assembler {
public:
    static constexpr bool kReads = true;
    class Cursor;

    // Throws Failure (kDamaged) with line, column, path, what was expected and what was there.
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
    using Members = std::vector<JsonMember>;

    explicit Assembler(std::string_view json);

    void Finish();
    bool OpenList(const char* name, JsonValue& first);
    void StartDefinition(JsonValue value);
    JsonMember* Take(const char* name, const char* suffix = "");
    void RefuseUnused() const;

    void Fill(FieldKind kind, const char* name, char* bytes, std::size_t width);
    void FillText(FieldKind kind, const char* name, char* bytes, std::size_t width);
    void Expect(const JsonMember& member, JsonText::Type type, const char* what) const;
    std::uint64_t Integer(const JsonMember& member, std::int64_t least, std::int64_t most) const;
    std::uint64_t RealBits(const JsonMember& member, const char* name);
    std::string Encoded(const JsonMember& member) const;
    std::string FromHex(const JsonMember& member) const;
    // Throws Failure: "Definitions[2].AreaName: expected ..., not ...".
    [[noreturn]] void FailAt(const JsonMember& member, const std::string& expected) const;
    std::string PathOf(const JsonMember& member) const;

    JsonText json_;
    LongWork work_{json_.Root().end};
    std::string out_;
    Members root_;
    Members own_;                       // of the header or the definition at hand
    Members* members_ = nullptr;        // where the next fields are
    Place place_;                       // of the header or the definition at hand
    std::size_t definitionStart_ = 0;   // in the file
    std::size_t definitionOffset_ = 0;  // in the JSON text
    std::int32_t version_ = 0;
    DefinitionRecord record_;
};

}  // namespace zel
