#pragma once

#include <string>
#include <string_view>

#include "zel/definition/DefinitionRecord.h"
#include "zel/record/NamedReader.h"
#include "zel/text/LongWork.h"
#include "Field.h"

namespace zel {

// Walks the bytes of a file as a reader would and shows each field to a visitor. Never fails and never looks
// past the end: what a damaged file lacks is shown as missing, what no reader looks at as left over.
class Surveyor final : public NamedReader {
public:
    class Cursor;

    // The bytes must outlive the survey; `start` is where they stand in the file.
    Surveyor(std::string_view bytes, FieldVisitor& visitor, std::size_t start = 0)
        : rest_(bytes), visitor_(visitor), offset_(start) {}

    // The whole file. With `asWritten`, header sections are those of the stored Flags alone.
    static void Survey(std::string_view file, FieldVisitor& visitor, bool asWritten = false);
    // The drawing of a sketch of `version`.
    static void SurveyDrawing(std::string_view bytes, std::int32_t version, FieldVisitor& visitor,
                              std::size_t start = 0);
    // The fields of one definition, up to the opening of its members, in a file whose definition starts
    // there.
    static void SurveyDefinition(std::string_view file, std::size_t offset, std::int32_t version,
                                 const Place& place, FieldVisitor& visitor);
    // A definition of a file of `version`, up to the opening of its members and the byte behind that.
    // False where the bytes do not go on as a writer's would.
    static bool LooksLikeDefinition(std::string_view bytes, std::int32_t version);

    std::string_view Take(FieldForm form, const char* name, std::size_t width) override;
    std::string_view Rest() const override { return rest_; }
    void BeginElements(const char* list) override { place_.push_back({list, kNoIndex}); }
    void EndElements() override { place_.pop_back(); }
    void BeginRecord() override;
    void EndRecord() override { visitor_.OnRecordEnd(); }
    void BeginValue() override { ++place_.back().index; }
    void Fail() override;

    // The calls of an archive (FileWalk.h) beyond those of NamedReader.
    void BeginHeader() {
        isInHeader_ = true;
        visitor_.OnHeader();
    }
    void EndHeader() {
        isInHeader_ = false;
        visitor_.OnHeaderEnd();
    }
    using NamedReader::Field;
    void Field(DefinitionBlock& block, const char* name);

private:
    void ShowLeftOver();

    std::string_view rest_;
    FieldVisitor& visitor_;
    std::size_t offset_;
    bool isInHeader_ = false;
    Place place_;
    DefinitionRecord record_;  // where the fields of the definition at hand go
    std::string completed_;    // a field that the end cuts
    std::string_view unread_;  // behind a failure
    LongWork* work_ = nullptr;
};

}  // namespace zel
