#include "HexPrinter.h"

#include <algorithm>
#include <string>

#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"

namespace zel {

void HexPrinter::OnField(const Field& field) {
    constexpr std::size_t kBytesOfLine = 16, kNameWidth = 24;
    if (field.bytes.empty()) return;  // the end of a list that only its count tells
    for (std::size_t at = 0; at < std::max<std::size_t>(field.present, 1); at += kBytesOfLine) {
        const std::size_t size = std::min(kBytesOfLine, field.present - at);
        std::string line =
            HexNumber(field.offset + at, 4).substr(2) + "  " + HexDigits(field.bytes.substr(at, size), " ");
        if (at == 0) {
            line.resize(std::string("00000000  ").size() + 3 * kBytesOfLine + 1, ' ');
            std::string name = NameText(field);
            name.resize(std::max(name.size() + 1, kNameWidth), ' ');
            line += palette_.name + name + palette_.end + ' ' + ValueText(field);
            if (field.Missing())
                line += std::string("  ") + palette_.warning + "(" + Counted(field.Missing(), "byte") +
                        " missing)" + palette_.end;
        }
        out_ << line << '\n';
    }
}

void HexPrinter::OnRecord(const Place& place) {
    out_ << "          " << palette_.heading << PlaceText(place) << palette_.end << '\n';
}

}  // namespace zel
