#include "PagePrinter.h"

#include <algorithm>

#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"

namespace zel {

void PagePrinter::OnHeader() {
    Heading("Header");
    whole_ = "File";
    thing_ = "definition";
}

void PagePrinter::OnField(const Field& field) {
    constexpr std::size_t kNameWidth = 24;
    missing_ += field.Missing();
    const bool isFraming = field.kind == FieldKind::kMarkedList || field.kind == FieldKind::kTypedList ||
                           field.kind == FieldKind::kListEnd;
    if (isFraming || field.present == 0) return;
    if (field.name == "Signature" && field.Text() != "TRN4WIN") hasSignature_ = false;
    if (field.kind == FieldKind::kLeftOver) {
        Indent({});
        Heading("Behind the end");
    } else if (isOutside_) {
        ReturnTo(*field.place);
    }
    std::string name = NameText(field);
    name.resize(std::max(name.size() + 1, kNameWidth), ' ');
    out_ << indent_ << "  " << palette_.name << name << palette_.end << ' ' << ValueText(field);
    if (field.Missing()) out_ << "  " << palette_.warning << "(cut short)" << palette_.end;
    out_ << '\n';
}

void PagePrinter::OnRecord(const Place& place) {
    ++records_;
    Indent(place);
    std::string text = PlaceText(place);
    if (nextFind_ < finds_.size() && PlaceText(finds_[nextFind_].place) == text)
        text += "  (taken up from " + HexNumber(finds_[nextFind_++].offset, 4) + ")";
    Heading(text);
}

// Behind the records of a list, those of the record around it go on.
void PagePrinter::ReturnTo(const Place& place) {
    Indent(place);
    Heading(place.empty() ? whole_ : PlaceText(place) + ", continued");
}

void PagePrinter::Finish() {
    Indent({});
    Heading(Counted(records_, thing_));
    if (!hasSignature_) Warn("The Signature is not \"TRN4WIN\": this is hardly an area definition file.");
    if (missing_)
        Warn("The file is cut short: it lacks at least " + Counted(missing_, "byte") + " at its end.");
}

void PagePrinter::Heading(const std::string& text) {
    if (!isFirst_) out_ << '\n';
    isFirst_ = isOutside_ = false;
    out_ << indent_ << palette_.heading << text << palette_.end << '\n';
}

void PagePrinter::Indent(const Place& place) {
    constexpr std::size_t kDeepest = 12;
    indent_.assign(place.empty() ? 0 : 4 * (std::min(place.size(), kDeepest) - 1), ' ');
}

void PagePrinter::Warn(const std::string& text) { out_ << palette_.warning << text << palette_.end << '\n'; }

}  // namespace zel
