#include "PagePrinter.h"

#include <algorithm>

#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"

namespace zel {

PagePrinter::PagePrinter(std::ostream& out, const Palette& palette) : out_(out), palette_(palette) {
    Heading("Header");
}

void PagePrinter::OnField(const Field& field) {
    constexpr std::size_t kNameWidth = 24;
    missing_ += field.Missing();
    if (field.kind == FieldKind::kOpening || field.kind == FieldKind::kClosing || field.present == 0) return;
    if (field.kind == FieldKind::kLeftOver) {
        indent_.clear();
        Heading("Behind the end");
    }
    std::string name(field.name);
    name.resize(std::max(name.size() + 1, kNameWidth), ' ');
    out_ << indent_ << "  " << palette_.name << name << palette_.end << ' ' << ValueText(field);
    if (field.Missing()) out_ << "  " << palette_.warning << "(cut short)" << palette_.end;
    out_ << '\n';
}

void PagePrinter::OnDefinition(const Place& place) {
    constexpr std::size_t kDeepest = 12;
    ++definitions_;
    indent_.assign(4 * (std::min(place.size(), kDeepest) - 1), ' ');
    Heading(PlaceText(place));
}

void PagePrinter::Finish() {
    indent_.clear();
    Heading(Counted(definitions_, "definition"));
    if (missing_)
        Warn("The file is cut short: it lacks at least " + Counted(missing_, "byte") + " at its end.");
}

void PagePrinter::Heading(const std::string& text) {
    if (text != "Header") out_ << '\n';
    out_ << indent_ << palette_.heading << text << palette_.end << '\n';
}

void PagePrinter::Warn(const std::string& text) { out_ << palette_.warning << text << palette_.end << '\n'; }

}  // namespace zel
