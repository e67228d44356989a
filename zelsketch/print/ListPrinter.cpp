#include "ListPrinter.h"

#include <algorithm>

#include "zel/definition/SketchFile.h"
#include "zel/survey/FieldNames.h"
#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"
#include "zel/text/Windows1252.h"

namespace zel {
namespace {

constexpr std::string_view kFileTitle = "File";

// The columns of the page.
constexpr struct {
    std::string_view name;
    std::size_t width;
} kOnPage[] = {{"AreaCode", 12}, {"AreaName", 19}, {"AreaDescription", 19}, {"Multiplier", 10}};

std::string CellText(const Field& field) {
    if (field.Missing()) return {};
    if (field.kind == FieldKind::kReal) return Decimal(field.Bits());
    if (field.kind == FieldKind::kUnsigned || field.kind == FieldKind::kSigned)
        return std::to_string(field.Integer());
    return std::string(UpToNul(field.Text()));
}

// Widens a cell as a terminal shows it, a character a column.
std::string Padded(std::string text, std::size_t width) {
    const auto isStart = [](char c) { return (c & 0xC0) != 0x80; };
    const auto length = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isStart));
    return text.append(std::max(width, length) - length, ' ');
}

}  // namespace

ListPrinter::ListPrinter(std::ostream& out, Form form, std::size_t fileWidth, const Palette& palette)
    : out_(out),
      form_(form),
      fileWidth_(fileWidth ? std::max(fileWidth, kFileTitle.size()) : 0),
      palette_(palette),
      columns_(FieldNames::Of(SketchFile::kNewestVersion).definition),
      cells_(columns_.size()) {
    PrintHeading();
}

void ListPrinter::SetFile(std::string_view name) {
    file_ = name;
    missing_ = 0;
}

void ListPrinter::OnRecord(const Place&) {
    for (std::string& cell : cells_) cell.clear();
    next_ = 0;
}

void ListPrinter::OnField(const Field& field) {
    missing_ += field.Missing();
    if (field.place->empty()) return;
    if (field.kind == FieldKind::kMarkedList) return PrintRow(*field.place);
    while (next_ < columns_.size() && columns_[next_] != field.name) ++next_;
    if (next_ < columns_.size()) cells_[next_] = CellText(field);
}

void ListPrinter::PrintHeading() {
    if (form_ != Form::kPage) {
        buffer_ = form_ == Form::kCommas ? "File,Place," : "File\tPlace\t";
        return PrintCells(columns_);
    }
    buffer_ = palette_.heading;
    if (fileWidth_) buffer_ += Padded(std::string(kFileTitle), fileWidth_) + "  ";
    for (const auto& column : kOnPage) buffer_ += Padded(std::string(column.name), column.width) + "  ";
    buffer_ += std::string("Place") + palette_.end + '\n';
}

void ListPrinter::PrintRow(const Place& place) {
    constexpr std::size_t kFull = 65536;
    if (buffer_.size() >= kFull) Flush();
    if (form_ == Form::kPage) return PrintPageRow(place);
    Cell(file_);
    Cell(PlaceText(place));
    PrintCells(cells_);
}

void ListPrinter::PrintPageRow(const Place& place) {
    constexpr std::size_t kDeepest = 12;
    if (fileWidth_) buffer_ += Padded(file_, fileWidth_) + "  ";
    const std::string indent(2 * (std::min(place.size(), kDeepest) - 1), ' ');
    for (const auto& column : kOnPage) {
        const bool isFirst = &column == kOnPage;
        buffer_ += Padded((isFirst ? indent : "") + Printable(Of(column.name)), column.width) + "  ";
    }
    buffer_ += PlaceText(place) + '\n';
}

void ListPrinter::PrintCells(const std::vector<std::string>& cells) {
    for (const std::string& cell : cells) Cell(Utf8OfWindows1252(cell));
    buffer_.back() = '\n';
}

// A cell and what separates it from the next.
void ListPrinter::Cell(std::string_view text) {
    if (form_ == Form::kCommas) {
        const bool isQuoted = text.find_first_of(",\"\r\n") != text.npos ||
                              (!text.empty() && (text.front() == ' ' || text.back() == ' '));
        if (isQuoted) buffer_ += '"';
        for (const char c : text) buffer_.append(c == '"' ? 2 : 1, c);
        if (isQuoted) buffer_ += '"';
        buffer_ += ',';
        return;
    }
    constexpr std::string_view kSpecial = "\t\n\r\\", kLetters = "tnr\\";
    for (const char c : text) {
        const std::size_t special = kSpecial.find(c);
        if (special == kSpecial.npos) {
            buffer_ += c;
        } else {
            buffer_ += {'\\', kLetters[special]};
        }
    }
    buffer_ += '\t';
}

std::string_view ListPrinter::Of(std::string_view column) const {
    const auto found = std::find(columns_.begin(), columns_.end(), column);
    return cells_[static_cast<std::size_t>(found - columns_.begin())];
}

void ListPrinter::Flush() {
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    buffer_.clear();
}

}  // namespace zel
