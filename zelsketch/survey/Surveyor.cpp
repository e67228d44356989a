#include "Surveyor.h"

#include <algorithm>

#include "FileWalk.h"
#include "zel/drawing/DrawingRecord.h"

namespace zel {

class Surveyor::Cursor {
public:
    Cursor(Surveyor& surveyor, DefinitionList&, const char* name) : surveyor_(surveyor), name_(name) {
        if (surveyor_.place_.empty()) surveyor_.record_.SetVersion(surveyor_.version());
        surveyor_.Take({FieldKind::kMarkedList}, name_, 1);
        surveyor_.BeginElements(name_);
    }

    DefinitionRecord* Next() {
        if (surveyor_.place_.back().index != kNoIndex) surveyor_.EndRecord();
        if (surveyor_.AtElement()) {
            surveyor_.BeginRecord();
            return &surveyor_.record_;
        }
        surveyor_.EndElements();
        surveyor_.Take({FieldKind::kListEnd}, name_, 1);
        return nullptr;
    }
    DefinitionRecord* Current() { return &surveyor_.record_; }

private:
    Surveyor& surveyor_;
    const char* name_;
};

namespace {

// Whether fields look like those of a writer that was in step.
struct InStep : FieldVisitor {
    void OnField(const Field& field) override {
        const std::size_t first = field.Byte(0);
        if (field.present == 0) holds = false;
        if (field.kind == FieldKind::kCounted && first > field.MaxLength()) holds = false;
        if (field.kind == FieldKind::kShort && first != 6) holds = false;
        if (field.kind == FieldKind::kMarkedList && first != 1) holds = false;
    }
    bool holds = true;
};

}  // namespace

void Surveyor::Survey(std::string_view file, FieldVisitor& visitor, bool asWritten) {
    LongWork work(file.size());
    Surveyor surveyor(file, visitor);
    surveyor.work_ = &work;
    WalkFile(surveyor, asWritten);
    surveyor.ShowLeftOver();
}

void Surveyor::SurveyDrawing(std::string_view bytes, std::int32_t version, FieldVisitor& visitor,
                             std::size_t start) {
    LongWork work(start + bytes.size());
    Surveyor surveyor(bytes, visitor, start);
    surveyor.work_ = &work;
    NamedReader& reader = surveyor;
    DrawingRecord drawing;
    drawing.SetVersion(version);
    drawing.Pass(reader);
    surveyor.ShowLeftOver();
}

void Surveyor::SurveyDefinition(std::string_view file, std::size_t offset, std::int32_t version,
                                const Place& place, FieldVisitor& visitor) {
    Surveyor surveyor(file.substr(offset), visitor, offset);
    surveyor.place_ = place;
    surveyor.record_.SetVersion(version);
    surveyor.record_.Head(surveyor);
    surveyor.Take({FieldKind::kMarkedList}, DefinitionRecord::kNestedName, 1);
}

bool Surveyor::LooksLikeDefinition(std::string_view bytes, std::int32_t version) {
    InStep inStep;
    Surveyor surveyor(bytes, inStep);
    surveyor.record_.SetVersion(version);
    surveyor.record_.Head(surveyor);
    surveyor.Take({FieldKind::kMarkedList}, DefinitionRecord::kNestedName, 1);
    const std::string_view rest = surveyor.rest_;
    return inStep.holds && (rest.empty() || rest[0] == 0 || rest[0] == 6);
}

void Surveyor::Field(DefinitionBlock& block, const char*) { block.EachField(*this); }

std::string_view Surveyor::Take(FieldForm form, const char* name, std::size_t width) {
    const std::string_view there = rest_.substr(0, width);
    std::string_view whole = there;
    if (there.size() < width) {
        completed_ = there;
        if (there.empty() && form.kind == FieldKind::kShort) completed_ = '\6';
        if (there.empty() && form.kind == FieldKind::kMarkedList) completed_ = '\1';
        completed_.resize(width);
        whole = completed_;
    }
    if (work_) work_->At(offset_);
    visitor_.OnField({name, form.kind, offset_, whole, there.size(), &place_, form.unit, isInHeader_});
    rest_.remove_prefix(there.size());
    offset_ += there.size();
    return whole;
}

void Surveyor::BeginRecord() {
    ++place_.back().index;
    visitor_.OnRecord(place_);
}

void Surveyor::Fail() {
    unread_ = rest_;
    rest_ = {};
}

void Surveyor::ShowLeftOver() {
    const std::string_view rest = unread_.empty() ? rest_ : unread_;
    if (!rest.empty())
        visitor_.OnField({"LeftOver", FieldKind::kLeftOver, offset_, rest, rest.size(), &place_});
}

}  // namespace zel
