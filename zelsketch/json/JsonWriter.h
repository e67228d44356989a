#pragma once

#include <ostream>
#include <string>

#include "zel/survey/Field.h"

namespace zel {

// Writes a file as JSON that tells every byte of it, as the file is walked: memory does not grow with it.
// A text is a string where the string alone tells the field's bytes, else an object: "text", and beside it
// "count" where that is not the text's length, "behind" (hexadecimal, flush with the field's end) for bytes
// behind the text, "tag" where it is not 6. A double is a number, or "0x" and its bits where no number is
// exact. An opening byte other than 1 stands in front of its list. "LeftOver" holds bytes behind the file's
// end, "CutShort" says how many bytes were missing.
class JsonWriter : public FieldVisitor {
public:
    explicit JsonWriter(std::ostream& out);

    void OnField(const Field& field) override;
    void OnHeader() override;
    void OnHeaderEnd() override { Close('}'); }
    void OnRecord(const Place& place) override;
    void OnRecordEnd() override { Close('}'); }
    void Finish();

private:
    void Key(std::string_view name);
    void NewLine();
    void Open(char bracket);
    void Close(char bracket);
    void PartsOfText(const Field& field);
    void String(std::string_view text);
    void OpenList(const Field& field);
    void Value(const Field& field);
    void Numbers(const Field& field);
    void Flush();

    std::ostream& out_;
    std::string buffer_;
    std::size_t depth_ = 0;
    std::size_t missing_ = 0;
    bool first_ = true;  // nothing stands behind the last bracket yet
};

}  // namespace zel
