#include "Editor.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>

#include "FieldValue.h"
#include "PathFinder.h"
#include "zel/definition/SketchFile.h"
#include "zel/survey/Checker.h"
#include "zel/survey/FieldText.h"
#include "zel/survey/FileWalk.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Failure.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

using Span = PathFinder::Span;
using Definition = PathFinder::Definition;

void ExpectSound(const std::string& file, const char* what) {
    const std::string damage = DamageOf(Checker::Check(file));
    if (!damage.empty()) throw Failure(kDamaged, what + damage);
}
void ExpectSoundFile(const std::string& file) { ExpectSound(file, ""); }
void ExpectSoundResult(const std::string& file) { ExpectSound(file, "not changed, it would be "); }

// A damaged file may be mended value by value: it must not get worse.
void ExpectNotWorse(const std::string& before, const std::string& after) {
    const auto damages = [](const Findings& findings) {
        return std::count_if(findings.begin(), findings.end(),
                             [](const Finding& finding) { return finding.gravity == Finding::kDamage; });
    };
    const auto left = damages(Checker::Check(after));
    if (left > 0 && left > damages(Checker::Check(before))) ExpectSoundResult(after);
}

struct Assignment {
    // At the first "=" that is not within brackets.
    explicit Assignment(const std::string& text) {
        std::size_t at = 0;
        for (int depth = 0; at < text.size() && (depth > 0 || text[at] != '='); ++at)
            depth += text[at] == '[' ? 1 : text[at] == ']' ? -1 : 0;
        if (at == text.size()) throw Failure(kUnusable, text + ": expected '=' and a value behind the path");
        path = text.substr(0, at);
        value = text.substr(at + 1);
    }
    std::string path;
    std::string value;
};

// The places of a file that get other bytes.
class Patches {
public:
    explicit Patches(const std::string& file) : file_(file) {}

    void Put(Span span, const std::string& bytes) { patches_[span.begin] = {span, bytes}; }
    std::string Apply() const {
        std::string file;
        std::size_t at = 0;
        for (const auto& [begin, patch] : patches_) {
            if (begin < at) continue;  // within what has gone
            file.append(file_, at, begin - at);
            file += patch.bytes;
            at = patch.span.end;
        }
        return file.append(file_, at, std::string::npos);
    }

private:
    struct Patch {
        Span span;
        std::string bytes;
    };
    const std::string& file_;
    std::map<std::size_t, Patch> patches_;
};

// What decides what else stands in a file changes only with all of that.
void RefuseLayout(const Field& field) {
    if (field.isOfHeader && field.name == "FileVersion")
        throw Failure(kUnusable,
                      "Header.FileVersion: the version goes with what the file has in it; use convert");
}

void ExpectSameSections(const std::string& before, const std::string& after) {
    constexpr std::uint32_t kSections = FileHeader::kProgramVersionFlag | FileHeader::kWriterVersionsFlag;
    const std::uint32_t old = FlagsOfFile(before).asRead & kSections,
                        now = FlagsOfFile(after).asRead & kSections;
    if (old != now)
        throw Failure(kUnusable, "Header.Flags: with this Flags and Type readers look for the sections of " +
                                     HexNumber(now, 4) + ", the file has those of " + HexNumber(old, 4) +
                                     "; values that keep them fit");
}

std::string NewDefinition(const std::string& file) {
    DefinitionRecord record;
    record.SetVersion(static_cast<unsigned char>(file[offsetof(HeaderImage, FileVersion)]));
    std::ostringstream out;
    out.exceptions(std::ios_base::badbit);
    record.Write(out);
    return out.str();
}

// Where the definition at an offset stands.
struct PlaceFinder : FieldVisitor {
    PlaceFinder(const std::string& file, std::size_t definition) : offset(definition) {
        Surveyor::Survey(file, *this);
    }
    void OnField(const Field& field) override {
        if (field.offset == offset && field.kind == FieldKind::kShort) place = PlaceText(*field.place);
    }
    const std::size_t offset;
    std::string place;
};

std::string Summary(const std::string& file, std::size_t definition) {
    const std::string place = PlaceFinder(file, definition).place;
    return place + ' ' + Editor::Get(file, place + ".AreaCode", false)[0];
}

// One definition, and no more.
Definition Single(const std::string& file, const ValuePath& path) {
    if (!path.field.empty() || path.steps.empty() || path.isList)
        throw Failure(kUnusable, path.text + ": expected the path of a definition");
    PathFinder finder(path, false);
    finder.Find(file);
    if (finder.definitions().size() != 1)
        throw Failure(kUnusable, path.text + ": expected one definition, these are " +
                                     std::to_string(finder.definitions().size()));
    return finder.definitions()[0];
}

// Where something may be put in: at the end of a list, or in front of one of its definitions, counted
// without `moved`.
struct Gap {
    Gap(const std::string& file, const std::string& where, const Definition* moved = nullptr) {
        ValuePath path = ValuePath::Parse(where);
        if (path.isOfHeader || !path.field.empty() || !path.IsOfDefinitions())
            throw Failure(kUnusable, where + ": expected the path of a list or of a definition in it");
        ValuePath list = path;
        if (!path.isList) list.steps.pop_back();
        list.isList = true;
        PathFinder finder(list, false);
        finder.Find(file);
        if (finder.lists() != 1) throw Failure(kUnusable, where + ": expected one list");
        offset = finder.listEnd();
        if (path.isList) return;
        if (path.steps.back().kind != ValuePath::Step::kIndex) {
            offset = Single(file, path).span.begin;
            return;
        }
        std::vector<Definition> others = finder.definitions();
        const auto isMoved = [&](const Definition& d) { return moved && d.span.begin == moved->span.begin; };
        others.erase(std::remove_if(others.begin(), others.end(), isMoved), others.end());
        const std::size_t index = path.steps.back().index;
        if (index > others.size())
            throw Failure(kUnusable,
                          where + ": no such place; the last one has index " + std::to_string(others.size()));
        if (index < others.size()) offset = others[index].span.begin;
    }
    std::size_t offset = 0;
};

}  // namespace

std::vector<std::string> Editor::Get(const std::string& file, const std::string& path, bool all) {
    const ValuePath parsed = ValuePath::Parse(path);
    std::vector<std::string> lines;
    PathFinder finder(parsed, all, [&](const Field& field) {
        lines.push_back(parsed.field.empty() ? field.FullName() + " = " + ValueText(field)
                                             : PlainValue(field));
    });
    finder.Find(file);
    return lines;
}

Editor::Edit Editor::Set(const std::string& file, const std::vector<std::string>& assignments, bool all) {
    Edit edit;
    Patches patches(file);
    for (const std::string& text : assignments) {
        const Assignment assignment(text);
        const ValuePath path = ValuePath::Parse(assignment.path);
        if (path.field.empty()) throw Failure(kUnusable, assignment.path + ": expected the path of a field");
        PathFinder finder(path, all, [&](const Field& field) {
            RefuseLayout(field);
            const std::string bytes = BytesWithValue(field, assignment.value);
            if (bytes == field.bytes && field.Missing() == 0) return;
            patches.Put({field.offset, field.offset + field.present}, bytes);
            Field changed = field;
            changed.bytes = bytes;
            edit.changes.push_back(field.FullName() + ": " + ValueText(field) + " to " + ValueText(changed));
        });
        finder.Find(file);
    }
    edit.file = patches.Apply();
    ExpectSameSections(file, edit.file);
    ExpectNotWorse(file, edit.file);
    return edit;
}

Editor::Edit Editor::Add(const std::string& file, const std::string& where,
                         const std::vector<std::string>& fields) {
    ExpectSoundFile(file);
    const Gap gap(file, where);
    std::string longer = file;
    longer.insert(gap.offset, NewDefinition(file));
    const std::string place = PlaceFinder(longer, gap.offset).place;
    std::vector<std::string> assignments;
    std::transform(fields.begin(), fields.end(), std::back_inserter(assignments),
                   [&](const std::string& field) { return std::string(place).append(".").append(field); });
    Edit edit = Set(longer, assignments, false);
    edit.changes = {"added: " + Summary(edit.file, gap.offset)};
    return edit;
}

Editor::Edit Editor::Remove(const std::string& file, const std::vector<std::string>& paths, bool all) {
    ExpectSoundFile(file);
    Edit edit;
    Patches patches(file);
    for (const std::string& text : paths) {
        const ValuePath path = ValuePath::Parse(text);
        if (!path.field.empty() || path.steps.empty() || path.isList)
            throw Failure(kUnusable, text + ": expected the path of a definition");
        PathFinder finder(path, all);
        finder.Find(file);
        for (const Definition& definition : finder.definitions()) {
            patches.Put(definition.span, "");
            edit.changes.push_back("removed: " + Summary(file, definition.span.begin));
        }
    }
    edit.file = patches.Apply();
    ExpectSoundResult(edit.file);
    return edit;
}

Editor::Edit Editor::Move(const std::string& file, const std::string& from, const std::string& to) {
    ExpectSoundFile(file);
    const Definition moved = Single(file, ValuePath::Parse(from));
    const auto [begin, end] = moved.span;
    std::size_t offset = Gap(file, to, &moved).offset;
    Edit edit;
    edit.file = file;
    if (offset == begin || offset == end) return edit;
    if (offset > begin && offset < end)
        throw Failure(kUnusable, to + ": a definition cannot be moved into itself");
    edit.file.erase(begin, end - begin);
    if (offset > begin) offset -= end - begin;
    edit.file.insert(offset, file, begin, end - begin);
    ExpectSoundResult(edit.file);
    edit.changes = {"moved: " + Summary(file, begin) + " to " + PlaceFinder(edit.file, offset).place};
    return edit;
}

}  // namespace zel
