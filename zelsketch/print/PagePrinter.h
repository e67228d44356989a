#pragma once

#include <ostream>
#include <string>

#include "zel/survey/Field.h"
#include "zel/text/Palette.h"

namespace zel {

// Prints a file as a page for people: a field a line, records under their places, nested ones indented.
class PagePrinter : public FieldVisitor {
public:
    PagePrinter(std::ostream& out, const Palette& palette) : out_(out), palette_(palette) {}

    void OnField(const Field& field) override;
    void OnHeader() override;
    void OnHeaderEnd() override { isOutside_ = true; }
    void OnRecord(const Place& place) override;
    void OnRecordEnd() override { isOutside_ = true; }
    void Finish();

private:
    void Heading(const std::string& text);
    void Indent(const Place& place);
    void ReturnTo(const Place& place);
    void Warn(const std::string& text);

    std::ostream& out_;
    const Palette palette_;
    std::string indent_;
    const char* whole_ = "Drawing";
    const char* thing_ = "record";
    std::size_t records_ = 0;
    std::size_t missing_ = 0;
    bool isFirst_ = true;
    bool isOutside_ = true;  // of the record whose heading was last
    bool hasSignature_ = true;
};

}  // namespace zel
