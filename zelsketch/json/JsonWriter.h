#pragma once

#include <ostream>
#include <string>

#include "zel/survey/Field.h"

namespace zel {

// Writes a file as JSON that tells every byte of it, as the file is walked: memory does not grow with it.
// Each field has one shape whatever its bytes are: a text is a string, a real a number, or null where no
// number is exact. What the value alone does not tell stands behind it under the field's name and a suffix:
//
//   Count    the count of a text, where that is not its length
//   Behind   bytes behind a text (hexadecimal, flush with the field's end), also where it fills the field
//   Tag      the tag of a ShortString, where that is not 6
//   Code     the code of a style, where that is not the usual one
//   Bits     "0x" and the digits of a real
//   Opening  the opening byte of a list, where that is not the usual one; in front of the list
//
// "LeftOver" holds bytes behind the file's end, "CutShort" says how many bytes were missing.
class JsonWriter : public FieldVisitor {
public:
    static constexpr char kFileSchema[] = "definition-file.schema.json";
    static constexpr char kDrawingSchema[] = "drawing.schema.json";

    // The schema's name stands first.
    explicit JsonWriter(std::ostream& out, const char* schema = kFileSchema);

    void OnField(const Field& field) override;
    void OnHeader() override;
    void OnHeaderEnd() override { Close('}'); }
    void OnRecord(const Place& place) override;
    void OnRecordEnd() override { Close('}'); }
    void Finish();

private:
    void Key(std::string_view name, std::string_view suffix = {});
    void NewLine();
    void Open(char bracket);
    void Close(char bracket);
    void OpenList(const Field& field);
    void Text(const Field& field);
    void String(std::string_view text);
    void Numbers(const Field& field);
    void Number(std::uint64_t value) { buffer_ += std::to_string(value); }
    void Flush();

    std::ostream& out_;
    std::string buffer_;
    std::size_t depth_ = 0;
    std::size_t missing_ = 0;
    bool first_ = true;  // nothing stands behind the last bracket yet
};

}  // namespace zel
