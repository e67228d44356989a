#pragma once

#include <ostream>
#include <string>

#include "zel/survey/Field.h"
#include "zel/text/Palette.h"

namespace zel {

// Prints a file as a page for people: a field a line, definitions under their places, members indented.
class PagePrinter : public FieldVisitor {
public:
    PagePrinter(std::ostream& out, const Palette& palette);

    void OnField(const Field& field) override;
    void OnHeaderEnd() override { Heading("File"); }
    void OnDefinition(const Place& place) override;
    void Finish();

private:
    void Heading(const std::string& text);
    void Warn(const std::string& text);

    std::ostream& out_;
    const Palette palette_;
    std::string indent_;
    std::size_t definitions_ = 0;
    std::size_t missing_ = 0;
};

}  // namespace zel
