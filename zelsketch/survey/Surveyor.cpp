#include "Surveyor.h"

#include <algorithm>

#include "FileWalk.h"

namespace zel {

class Surveyor::Cursor {
public:
    Cursor(Surveyor& surveyor, DefinitionList&) : surveyor_(surveyor) { surveyor_.OpenList(); }
    DefinitionRecord* Next() { return surveyor_.NextElement() ? &surveyor_.record_ : nullptr; }
    DefinitionRecord* Current() { return &surveyor_.record_; }

private:
    Surveyor& surveyor_;
};

namespace {

// Whether fields look like those of a writer that was in step.
struct InStep : FieldVisitor {
    void OnField(const Field& field) override {
        const std::size_t first = field.Byte(0);
        if (field.present == 0) holds = false;
        if (field.kind == FieldKind::kCounted && first > field.MaxLength()) holds = false;
        if (field.kind == FieldKind::kShort && first != 6) holds = false;
        if (field.kind == FieldKind::kOpening && first != 1) holds = false;
    }
    bool holds = true;
};

}  // namespace

void Surveyor::Survey(std::string_view file, FieldVisitor& visitor, bool asWritten) {
    Surveyor surveyor(file, visitor);
    WalkFile(surveyor, asWritten);
    const std::string_view rest = surveyor.rest_;
    if (!rest.empty())
        visitor.OnField(
            {"LeftOver", FieldKind::kLeftOver, surveyor.offset_, rest, rest.size(), &surveyor.place_});
}

bool Surveyor::LooksLikeDefinition(std::string_view bytes, std::int32_t version) {
    InStep inStep;
    Surveyor surveyor(bytes, inStep);
    surveyor.record_.SetVersion(version);
    surveyor.record_.Head(surveyor);
    surveyor.Show(FieldKind::kOpening, "Members", 1);
    const std::string_view rest = surveyor.rest_;
    return inStep.holds && (rest.empty() || rest[0] == 0 || rest[0] == 6);
}

void Surveyor::Field(ShortString&, const char* name) {
    const std::size_t count = rest_.size() < 2 ? 0 : static_cast<unsigned char>(rest_[1]);
    Show(FieldKind::kShort, name, 2 + count, 6);
}

void Surveyor::Field(DefinitionBlock& block, const char*) { EachField(*this, block); }

std::string_view Surveyor::Show(FieldKind kind, const char* name, std::size_t width, char absent) {
    const std::string_view there = rest_.substr(0, width);
    std::string_view whole = there;
    if (there.size() < width) {
        std::fill_n(completed_, width, '\0');
        completed_[0] = absent;
        std::copy(there.begin(), there.end(), completed_);
        whole = {completed_, width};
    }
    visitor_.OnField({name, kind, offset_, whole, there.size(), &place_});
    rest_.remove_prefix(there.size());
    offset_ += there.size();
    return whole;
}

void Surveyor::OpenList() {
    if (place_.empty()) record_.SetVersion(version_);
    Show(FieldKind::kOpening, place_.empty() ? "Definitions" : "Members", 1, 1);
    place_.push_back(kBeforeFirst);
}

bool Surveyor::NextElement() {
    if (!rest_.empty() && rest_[0] != 0) {
        ++place_.back();
        visitor_.OnDefinition(place_);
        return true;
    }
    place_.pop_back();
    Show(FieldKind::kClosing, place_.empty() ? "Definitions" : "Members", 1);
    return false;
}

}  // namespace zel
