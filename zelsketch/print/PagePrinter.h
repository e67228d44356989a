#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "zel/survey/Salvager.h"
#include "zel/text/Palette.h"

namespace zel {

// Prints a file as a page for people: a field a line, records under their places, nested ones indented.
class PagePrinter : public FieldVisitor {
public:
    // Marks the definitions that no reader of the damaged file finds.
    PagePrinter(std::ostream& out, const Palette& palette, std::vector<Salvage::Find> finds = {})
        : out_(out), palette_(palette), finds_(std::move(finds)) {}

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
    const std::vector<Salvage::Find> finds_;
    std::size_t nextFind_ = 0;
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
