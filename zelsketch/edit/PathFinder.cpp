#include "PathFinder.h"

#include <algorithm>

#include "zel/survey/FieldNames.h"
#include "zel/definition/SketchFile.h"
#include "zel/survey/FieldText.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Failure.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

bool IsFraming(FieldKind kind) {
    return kind == FieldKind::kMarkedList || kind == FieldKind::kListEnd || kind == FieldKind::kLeftOver;
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
    return text.empty() ? "none" : text;
}

}  // namespace

void PathFinder::Find(std::string_view file) {
    found_.resize(path_.steps.size());
    counts_.assign(path_.steps.size() + 1, 0);
    Surveyor::Survey(file, *this);
    if (path_.IsOfDefinitions() && reached_ < path_.steps.size()) FailOfDefinition();
    if (!path_.field.empty() && !hasField_) FailOfField(file);
}

void PathFinder::OnRecord(const Place& place) {
    const std::size_t depth = place.size();
    matched_ = std::min(matched_, depth - 1);
    isFirstField_ = true;
    if (matched_ != depth - 1 || depth > path_.steps.size()) return;
    counts_[depth - 1] = place.back().index + 1;
    const ValuePath::Step& step = path_.steps[depth - 1];
    if (step.kind == ValuePath::Step::kEach ||
        (step.kind == ValuePath::Step::kIndex && step.index == place.back().index))
        matched_ = depth;
}

void PathFinder::OnField(const Field& field) {
    const std::size_t depth = field.place->size();
    if (isFirstField_ && depth > 0) {
        isFirstField_ = false;
        MatchCode(field);
        BeginDefinition(field);
    }
    reached_ = std::max(reached_, matched_);
    if (field.kind == FieldKind::kListEnd) EndList(field);
    if (IsFraming(field.kind) || !IsNamed(field)) return;
    hasField_ = true;
    if (onField_) onField_(field);
}

// The code is the first field of a definition.
void PathFinder::MatchCode(const Field& code) {
    const Place& place = *code.place;
    const std::size_t depth = place.size();
    if (matched_ != depth - 1 || depth > path_.steps.size()) return;
    const ValuePath::Step& step = path_.steps[depth - 1];
    if (step.kind != ValuePath::Step::kCode || code.Text() != step.code) return;
    matched_ = depth;
    Place& last = found_[depth - 1];
    const bool isSameList =
        last.size() == depth && std::equal(last.begin(), last.end() - 1, place.begin(),
                                           [](const Level& a, const Level& b) { return a.index == b.index; });
    if (isSameList && !all_)
        throw Failure(kUnusable, path_.text + ": this code stands more than once, at " + PlaceText(last) +
                                     " and " + PlaceText(place) + "; give the place, or --all");
    last = place;
}

bool PathFinder::IsNamed(const Field& field) const {
    if (field.isOfHeader != path_.isOfHeader) return false;
    const std::size_t depth = field.place->size(), steps = path_.steps.size();
    if (matched_ < steps) return false;
    if (!path_.field.empty()) return depth == steps && field.name == path_.field;
    return path_.isOfHeader || depth >= steps + (path_.isList ? 1 : 0);
}

void PathFinder::BeginDefinition(const Field& field) {
    const std::size_t depth = path_.steps.size() + (path_.isList ? 1 : 0);
    if (path_.IsOfDefinitions() && matched_ == path_.steps.size() && field.place->size() == depth)
        definitions_.push_back({*field.place, {field.offset, field.offset}});
}

void PathFinder::EndList(const Field& field) {
    const std::size_t depth = field.place->size();
    if (matched_ < path_.steps.size()) return;
    if (path_.isList && depth == path_.steps.size()) {
        ++lists_;
        listEnd_ = field.offset;
    }
    // The end of its members is that of a definition.
    if (!definitions_.empty() && definitions_.back().place.size() == depth)
        definitions_.back().span.end = field.offset + field.present;
}

void PathFinder::FailOfDefinition() const {
    throw Failure(kUnusable, path_.text + ": no such definition; " +
                                 (reached_ == 0 ? "the file" : "the definition around it") + " has " +
                                 Counted(counts_[reached_], reached_ == 0 ? "definition" : "member"));
}

void PathFinder::FailOfField(std::string_view file) const {
    constexpr std::size_t kVersion = offsetof(HeaderImage, FileVersion);
    const std::int32_t version = file.size() > kVersion ? static_cast<unsigned char>(file[kVersion]) : 0;
    const auto names = [&](const FieldNames& all) {
        return path_.isOfHeader ? all.header : path_.steps.empty() ? all.file : all.definition;
    };
    const auto has = [&](std::int32_t v) {
        const std::vector<std::string> there = names(FieldNames::Of(v));
        return std::find(there.begin(), there.end(), path_.field) != there.end();
    };
    std::int32_t first = 0;
    while (first <= SketchFile::kNewestVersion && !has(first)) ++first;
    std::string reason = "no such field; there are " + Joined(names(FieldNames::Of(version)));
    if (first <= SketchFile::kNewestVersion && first > version)
        reason = "version " + std::to_string(version) + " has no such field, from version " +
                 std::to_string(first) + " on there is one";
    if (path_.isOfHeader && first <= version) reason = "not in this file, as its Header.Flags say";
    throw Failure(kUnusable, path_.text + ": " + reason);
}

}  // namespace zel
