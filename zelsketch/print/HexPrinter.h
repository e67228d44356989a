#pragma once

#include <ostream>

#include "zel/survey/Field.h"
#include "zel/text/Palette.h"

namespace zel {

// Prints every byte of a file: its offset, the field it belongs to and that field's value.
class HexPrinter : public FieldVisitor {
public:
    HexPrinter(std::ostream& out, const Palette& palette) : out_(out), palette_(palette) {}

    void OnField(const Field& field) override;
    void OnRecord(const Place& place) override;

private:
    std::ostream& out_;
    const Palette palette_;
};

}  // namespace zel
