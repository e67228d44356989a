#include "Document.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>
#include <tuple>
#include <utility>

#include "zel/definition/SketchFile.h"
#include "zel/diff/Comparer.h"
#include "zel/edit/Converter.h"
#include "zel/edit/FieldValue.h"
#include "zel/json/JsonWriter.h"
#include "zel/print/ListPrinter.h"
#include "zel/survey/Checker.h"
#include "zel/survey/FieldText.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Failure.h"
#include "zel/text/Text.h"
#include "zel/text/Windows1252.h"

namespace zel {
namespace {

using Json = nlohmann::ordered_json;

std::string Utf8(std::string_view text) {
    std::string utf8;
    for (const char c : text) AppendUtf8(utf8, FromWindows1252(static_cast<unsigned char>(c)));
    return utf8;
}

// ASCII and the letters that UTF-8 writes with C3 first, which is what the files' code page has.
std::string LowerCase(std::string text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto& c = reinterpret_cast<unsigned char&>(text[i]);
        const bool isLatin =
            i > 0 && static_cast<unsigned char>(text[i - 1]) == 0xC3 && c >= 0x80 && c <= 0x9E;
        if ((c >= 'A' && c <= 'Z') || (isLatin && c != 0x97)) c += 0x20;
    }
    return text;
}

std::string Text(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

bool IsText(const Field& field) {
    return field.kind == FieldKind::kCounted || field.kind == FieldKind::kFixed ||
           field.kind == FieldKind::kShort;
}
bool IsWhole(const Field& field) {
    return field.kind == FieldKind::kUnsigned || field.kind == FieldKind::kSigned;
}
bool IsValue(const Field& field) { return IsText(field) || IsWhole(field) || field.kind == FieldKind::kReal; }

// What stands in the input of a field.
std::string EditText(const Field& field) { return IsText(field) ? Utf8(field.Text()) : PlainValue(field); }

// What there is to say of a field beyond its value: the date of a day number, bytes behind a text.
std::string NoteOf(const Field& field) {
    std::string words = ValueText(field);
    const std::string value = IsText(field) ? Quoted(field.Text()) : EditText(field);
    if (words.compare(0, value.size(), value) == 0) words.erase(0, value.size());
    return words.erase(0, words.find_first_not_of(' '));
}

Json FieldJson(const Field& field) {
    Json json{{"name", field.name},
              {"full", field.FullName()},
              {"offset", field.offset},
              {"length", field.bytes.size()},
              {"present", field.present}};
    json["note"] = NoteOf(field);
    json["value"] = EditText(field);
    if (IsText(field)) json["max"] = field.MaxLength();
    if (IsWhole(field)) json["least"] = LimitsOf(field).least, json["most"] = LimitsOf(field).most;
    return json;
}

}  // namespace

// Takes note of where each definition begins and ends, and keeps the fields that belong to none.
class Document::Indexer : public FieldVisitor {
public:
    explicit Indexer(Document& document) : document_(document) {}

    void OnRecord(const Place& place) override {
        path_.resize(place.size() - 1);
        const std::int32_t parent = path_.empty() ? kHeader : path_.back();
        path_.push_back(static_cast<std::int32_t>(document_.rows_.size()));
        if (parent != kHeader) ++document_.rows_[static_cast<std::size_t>(parent)].children;
        const auto level = static_cast<std::uint32_t>(place.size());
        document_.rows_.push_back({place.back().list, end_, end_, end_, parent, place.back().index, level});
    }

    void OnField(const Field& field) override {
        end_ = field.offset + field.present;
        if (field.place->empty()) {
            document_.header_.emplace_back(field);
            return;
        }
        path_.resize(field.place->size());
        Row& row = document_.rows_[static_cast<std::size_t>(path_.back())];
        if (field.kind == FieldKind::kMarkedList) row.members = field.offset;
        if (field.kind == FieldKind::kListEnd) row.end = end_;
    }

private:
    Document& document_;
    std::vector<std::int32_t> path_;
    std::size_t end_ = 0;
};

Document::Document(std::string bytes) : bytes_(std::move(bytes)) {
    Index();
    if (!rows_.empty()) selected_ = 0;
}

void Document::Index() {
    rows_.clear();
    header_.clear();
    Indexer indexer(*this);
    Surveyor::Survey(bytes_, indexer);
    for (const KeptField& kept : header_)
        if (kept.field.name == "FileVersion") version_ = static_cast<unsigned char>(kept.bytes[0]);
    findings_ = Checker::Check(bytes_);
    faulty_.clear();
    for (const Finding& finding : findings_)
        if (finding.gravity == Finding::kDamage) faulty_.insert(RowAt(finding.offset));
    ShowRows();
}

void Document::ShowRows() {
    shown_.clear();
    std::uint32_t folded = UINT32_MAX;  // rows deeper than this level are hidden
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (rows_[i].level > folded) continue;
        folded = rows_[i].isOpen ? UINT32_MAX : rows_[i].level;
        shown_.push_back(static_cast<std::int32_t>(i));
    }
}

Place Document::PlaceOf(std::int32_t row) const {
    Place place;
    for (; row != kHeader; row = At(row).parent) place.push_back({At(row).list, At(row).position});
    std::reverse(place.begin(), place.end());
    return place;
}

void Document::EachField(std::int32_t row, FieldVisitor& visitor, const Place& place) const {
    if (row != kHeader) {
        const Row& definition = rows_.at(static_cast<std::size_t>(row));
        return Surveyor::SurveyDefinition(bytes_, definition.offset, version_, place, visitor);
    }
    const Place none;
    for (const KeptField& kept : header_) {
        Field field = kept.field;
        field.bytes = kept.bytes;
        field.place = &none;
        visitor.OnField(field);
    }
}

std::string Document::Summary() const {
    Json findings = Json::array();
    for (const Finding& finding : findings_)
        findings.push_back({{"offset", finding.offset},
                            {"what", finding.what},
                            {"isDamage", finding.gravity == Finding::kDamage}});
    Json versions = Json::array();
    for (std::int32_t v = SketchFile::kOldestSavedVersion; v <= SketchFile::kNewestVersion; ++v)
        versions.push_back(v);
    const bool hasDefinitions = version_ >= 0 && version_ <= SketchFile::kNewestVersion;
    const std::string things = Counted(findings_.size(), "thing") + " to look at:";
    const std::string note = findings_.empty()      ? "Nothing is wrong with this file."
                             : IsDamaged(findings_) ? "This file is damaged, " + things
                                                    : "This file is sound, " + things;
    return Text({{"size", bytes_.size()},
                 {"version", version_},
                 {"definitions", rows_.size()},
                 {"visible", shown_.size()},
                 {"row", selected_},
                 {"canUndo", done_ > 0},
                 {"canRedo", done_ < changes_.size()},
                 {"canEdit", hasDefinitions},
                 {"canConvert", hasDefinitions && !IsDamaged(findings_)},
                 {"versions", versions},
                 {"isChanged", done_ != saved_},
                 {"said", said_},
                 {"note", note},
                 {"findings", findings}});
}

nlohmann::ordered_json Document::RowOf(std::int32_t row) const {
    struct Reader : FieldVisitor {
        void OnField(const Field& field) override {
            const auto take = [&](const char* name, const char* key) {
                if (field.name == name) json[key] = EditText(field);
            };
            take("AreaCode", "code");
            take("AreaName", "name");
            take("AreaDescription", "description");
            take("Multiplier", "multiplier");
            take("SubtractAreaCode", "subtract");
        }
        Json json;
    } reader;
    const Row& definition = At(row);
    reader.json = {{"row", row},
                   {"level", definition.level},
                   {"parent", definition.parent},
                   {"members", definition.children},
                   {"open", definition.isOpen},
                   {"isFaulty", faulty_.count(row) != 0}};
    EachField(row, reader);
    return reader.json;
}

std::string Document::Rows(std::size_t from, std::size_t count) const {
    Json rows = Json::array();
    const std::size_t end = from + std::min(count, shown_.size() - std::min(from, shown_.size()));
    for (std::size_t i = from; i < end; ++i) rows.push_back(RowOf(shown_[i]));
    return Text(rows);
}

std::string Document::AllRows() const {
    Json rows = Json::array();
    for (std::size_t i = 0; i < rows_.size(); ++i) rows.push_back(RowOf(static_cast<std::int32_t>(i)));
    return Text(rows);
}

std::string Document::Fields(std::int32_t row) const {
    struct Collector : FieldVisitor {
        void OnField(const Field& field) override {
            if (IsValue(field)) fields.push_back(FieldJson(field));
        }
        Json fields = Json::array();
    } collector;
    EachField(row, collector, PlaceOf(row));
    return Text(
        {{"title", row == kHeader ? "Header" : PlaceText(PlaceOf(row))}, {"fields", collector.fields}});
}

std::string Document::FieldAt(std::size_t offset) const {
    struct Finder : FieldVisitor {
        explicit Finder(std::size_t wanted) : offset(wanted) {}
        void OnField(const Field& field) override {
            if (offset >= field.offset && offset < field.offset + std::max<std::size_t>(field.present, 1))
                found = FieldJson(field);
        }
        std::size_t offset;
        Json found;
    } finder(offset);
    const std::int32_t row = RowAt(offset);
    EachField(row, finder, PlaceOf(row));
    // The byte that closes a list of members belongs to no field that can be shown by itself.
    if (finder.found.is_null()) finder.found = {{"name", "Members"}, {"offset", offset}, {"length", 1}};
    finder.found["row"] = row;
    return Text(finder.found);
}

void Document::Fold(std::int32_t row, bool isOpen) {
    At(row).isOpen = isOpen;
    ShowRows();
}

std::size_t Document::IndexOf(std::int32_t row) {
    bool isHidden = false;
    for (std::int32_t above = At(row).parent; above != kHeader; above = At(above).parent) {
        isHidden |= !At(above).isOpen;
        At(above).isOpen = true;
    }
    if (isHidden) ShowRows();
    return static_cast<std::size_t>(std::lower_bound(shown_.begin(), shown_.end(), row) - shown_.begin());
}

// Fields are looked through in file order, the header's last, from the one behind the field found last;
// around the end and on from the beginning.
std::string Document::Find(const std::string& text, bool isForward) {
    struct Finder : FieldVisitor {
        void OnField(const Field& field) override {
            if (!IsValue(field)) return;
            if (LowerCase(std::string(field.name)).find(wanted) == std::string::npos &&
                LowerCase(EditText(field)).find(wanted) == std::string::npos)
                return;
            hits.push_back({row, field.offset});
        }
        std::string wanted;
        std::int32_t row = kHeader;
        std::vector<std::pair<std::int32_t, std::size_t>> hits;
    } finder;
    finder.wanted = LowerCase(text);
    EachField(kHeader, finder);
    for (finder.row = 0; finder.row < static_cast<std::int32_t>(rows_.size()); ++finder.row)
        EachField(finder.row, finder);
    const auto& hits = finder.hits;
    if (text.empty() || hits.empty()) return Text({{"total", 0}});
    const auto last = std::make_pair(foundRow_, foundOffset_);
    auto hit = isForward ? std::upper_bound(hits.begin(), hits.end(), last)
                         : std::lower_bound(hits.begin(), hits.end(), last);
    if (isForward && hit == hits.end()) hit = hits.begin();
    if (!isForward) hit = (hit == hits.begin() ? hits.end() : hit) - 1;
    std::tie(foundRow_, foundOffset_) = *hit;
    Json found = Json::parse(FieldAt(foundOffset_));
    found["total"] = hits.size();
    found["number"] = hit - hits.begin() + 1;
    return Text(found);
}

// The row behind the last one below this one.
std::size_t Document::EndOf(std::int32_t row) const {
    auto end = static_cast<std::size_t>(std::int64_t{row} + 1);
    if (row == kHeader) return rows_.size();
    while (end < rows_.size() && rows_[end].level > At(row).level) ++end;
    return end;
}

// The definition whose bytes are there, the innermost one; the header where there is none.
std::int32_t Document::RowAt(std::size_t offset) const {
    const auto behind =
        std::upper_bound(rows_.begin(), rows_.end(), offset,
                         [](std::size_t wanted, const Row& row) { return wanted < row.offset; });
    auto row = static_cast<std::int32_t>(behind - rows_.begin()) - 1;
    while (row != kHeader && offset >= At(row).end) row = At(row).parent;
    return row;
}

std::string Document::Losses(std::int32_t version) const {
    const Conversion conversion = Converter::Convert(bytes_, version);
    Json lines = Json::array();
    Converter::ListLosses(bytes_, version,
                          [&](const std::string& lost) { lines.push_back("lost: " + lost); });
    for (const std::string& changed : conversion.changed) lines.push_back("changed: " + changed);
    if (conversion.dropsBytes) lines.push_back("bytes that readers do not see are not carried over");
    return Text(lines);
}

std::string Document::Converted(std::int32_t version) const {
    return Converter::Convert(bytes_, version).file;
}

std::string Document::Differences(const Document& other) const {
    Json lines = Json::array();
    for (const Difference& difference : Comparer::Compare(bytes_, other.bytes_))
        lines.push_back(LineText(difference));
    return Text(lines);
}

std::string Document::AsCsv(const std::string& name) const {
    std::ostringstream out;
    ListPrinter printer(out, ListPrinter::Form::kCommas, 0, Palette());
    printer.SetFile(name);
    Surveyor::Survey(bytes_, printer);
    printer.Flush();
    return out.str();
}

std::string Document::AsJson() const {
    std::ostringstream out;
    JsonWriter writer(out, JsonWriter::kFileSchema);
    Surveyor::Survey(bytes_, writer);
    writer.Finish();
    return out.str();
}

}  // namespace zel
