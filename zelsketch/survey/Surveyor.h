#pragma once

#include <cstring>
#include <string_view>

#include "zel/definition/DefinitionRecord.h"
#include "Field.h"

namespace zel {

// Walks the bytes of a file as a reader would and shows each field to a visitor. Never fails and never looks
// past the end: what a damaged file lacks is shown as missing, what no reader looks at as left over.
class Surveyor {
public:
    static constexpr bool kReads = true;
    class Cursor;

    // The bytes must outlive the survey; `start` is where they stand in the file.
    Surveyor(std::string_view bytes, FieldVisitor& visitor, std::size_t start = 0)
        : rest_(bytes), visitor_(visitor), offset_(start) {}

    // The whole file. With `asWritten`, header sections are those of the stored Flags alone.
    static void Survey(std::string_view file, FieldVisitor& visitor, bool asWritten = false);
    // A definition of a file of `version`, up to the opening of its members and the byte behind that.
    // False where the bytes do not go on as a writer's would.
    static bool LooksLikeDefinition(std::string_view bytes, std::int32_t version);

    // The calls of an archive (FileWalk.h).
    void BeginHeader() {}
    void EndHeader() { visitor_.OnHeaderEnd(); }
    void SetVersion(std::int32_t version) { version_ = version; }

    template <class T>
    void Field(T& field, const char* name) {
        const std::string_view bytes = Show(KindOf(field), name, sizeof field);
        std::memcpy(&field, bytes.data(), sizeof field);
    }
    void Field(ShortString&, const char* name);
    void Field(DefinitionBlock& block, const char* name);

    template <class T>
    void Since(std::int32_t introduced, T& field, const char* name) {
        if (version_ >= introduced) Field(field, name);
    }

private:
    static constexpr std::size_t kWidestField = 2 + 255;
    static constexpr std::uint32_t kBeforeFirst = 0xFFFFFFFF;  // one more is 0

    std::string_view Show(FieldKind kind, const char* name, std::size_t width, char absent = '\0');
    void OpenList();
    bool NextElement();

    std::string_view rest_;
    FieldVisitor& visitor_;
    std::size_t offset_;
    std::int32_t version_ = 0;
    Place place_;
    DefinitionRecord record_;  // where the fields of the definition at hand go
    char completed_[kWidestField];
};

}  // namespace zel
