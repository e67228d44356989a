#include "Comparer.h"

#include <algorithm>
#include <unordered_map>

#include "zel/survey/FieldText.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

const Field& CodeOf(const Outline::Record& record) { return record.fields[0]; }

Difference Of(Difference::Kind kind, const Outline::Record& record, const std::string& before = "") {
    return {kind, PlaceText(record.place), std::string(CodeOf(record).Text()), before, ""};
}

const Field* Find(const Outline::Record& record, const Field& like) {
    const auto found = std::find_if(record.fields.begin(), record.fields.end(), [&](const Field& field) {
        return field.name == like.name && field.kind == like.kind;
    });
    return found == record.fields.end() ? nullptr : &*found;
}

// A list's bytes other than its opening are no values.
bool IsValue(const Field& field) {
    return field.kind != FieldKind::kListEnd && (field.kind != FieldKind::kMarkedList || field.Byte(0) != 1);
}

std::string Value(const Field* field) {
    if (!field || !IsValue(*field)) return "";
    if (field->kind == FieldKind::kLeftOver) return HexDigits(field->bytes);
    if (field->kind == FieldKind::kMarkedList) return "opening byte " + std::to_string(field->Byte(0));
    return ValueText(*field) + (field->Missing() ? "  (cut short)" : "");
}

// Which elements of a sequence, none of which comes twice, can stay where they are while the others move.
std::vector<bool> LongestRise(const std::vector<std::uint32_t>& sequence) {
    std::vector<std::size_t> ends,
        before(sequence.size());  // by length: the element where a rise ends lowest
    for (std::size_t i = 0; i < sequence.size(); ++i) {
        const auto at = std::lower_bound(ends.begin(), ends.end(), i, [&](std::size_t a, std::size_t b) {
            return sequence[a] < sequence[b];
        });
        before[i] = at == ends.begin() ? i : *(at - 1);
        if (at == ends.end())
            ends.push_back(i);
        else
            *at = i;
    }
    std::vector<bool> stays(sequence.size());
    if (ends.empty()) return stays;
    std::size_t i = ends.back();
    for (std::size_t length = ends.size(); length > 0; --length, i = before[i]) stays[i] = true;
    return stays;
}

}  // namespace

const char* Difference::KindText() const {
    constexpr const char* kKinds[] = {"changed", "added", "removed", "moved"};
    return kKinds[kind];
}

std::string LineText(const Difference& difference) {
    const auto orNone = [](const std::string& value) { return value.empty() ? "none" : value; };
    std::string line = std::string(difference.KindText()) + ": " + difference.path;
    if (difference.kind != Difference::kChanged) line += ' ' + Quoted(difference.code);
    if (difference.kind == Difference::kMoved) line += " from " + difference.before;
    if (difference.kind == Difference::kChanged)
        line += ": " + orNone(difference.before) + " -> " + orNone(difference.after);
    return line;
}

std::vector<Difference> Comparer::Compare(std::string_view oldFile, std::string_view newFile) {
    Comparer comparer(oldFile, newFile);
    comparer.pending_ = {{0, 0}};
    while (!comparer.pending_.empty()) {
        const auto [a, b] = comparer.pending_.back();
        comparer.pending_.pop_back();
        comparer.CompareFields(comparer.old_[a], comparer.new_[b]);
        comparer.CompareMembers(comparer.old_[a], comparer.new_[b]);
    }
    return std::move(comparer.differences_);
}

void Comparer::CompareFields(const Outline::Record& a, const Outline::Record& b) {
    for (const Field& field : b.fields) {
        const Field* old = Find(a, field);
        if (old && old->bytes == field.bytes && old->present == field.present) continue;
        std::string before = Value(old), after = Value(&field);
        if (before.empty() && after.empty()) continue;
        if (before == after) after += "  (other bytes behind the text)";
        differences_.push_back({Difference::kChanged, field.FullName(), "", before, after});
    }
    for (const Field& field : a.fields)
        if (const std::string before = Value(&field); !before.empty() && !Find(b, field))
            differences_.push_back({Difference::kChanged, field.FullName(), "", before, ""});
}

void Comparer::CompareMembers(const Outline::Record& a, const Outline::Record& b) {
    const Indices matches = Match(a, b);  // by the index in b: the one in a
    Indices sequence;
    std::vector<bool> isMatched(a.members.size());
    for (const std::uint32_t match : matches)
        if (match != kNone) sequence.push_back(match), isMatched[match] = true;
    for (std::size_t i = 0; i < a.members.size(); ++i)
        if (!isMatched[i]) differences_.push_back(Of(Difference::kRemoved, old_[a.members[i]]));
    const std::vector<bool> stays = LongestRise(sequence);
    std::size_t next = 0;
    for (std::size_t i = 0; i < b.members.size(); ++i) {
        const Outline::Record& record = new_[b.members[i]];
        if (matches[i] == kNone)
            differences_.push_back(Of(Difference::kAdded, record));
        else if (!stays[next++])
            differences_.push_back(
                Of(Difference::kMoved, record, PlaceText(old_[a.members[matches[i]]].place)));
    }
    for (std::size_t i = b.members.size(); i-- > 0;) {
        if (matches[i] == kNone) continue;
        const std::uint32_t old = a.members[matches[i]], now = b.members[i];
        if (old_.Bytes(old_[old]) != new_.Bytes(new_[now])) pending_.emplace_back(old, now);
    }
}

Comparer::Indices Comparer::Match(const Outline::Record& a, const Outline::Record& b) const {
    Indices matches(b.members.size(), kNone);
    std::vector<bool> isTaken(a.members.size());
    // By a key of each record, the first with the first, the second with the second.
    const auto matchBy = [&](auto oldKey, auto newKey) {
        std::unordered_map<std::string_view, Indices> byKey;
        for (std::size_t i = a.members.size(); i-- > 0;)
            if (!isTaken[i]) byKey[oldKey(old_[a.members[i]])].push_back(static_cast<std::uint32_t>(i));
        for (std::size_t i = 0; i < b.members.size(); ++i) {
            const auto found = matches[i] == kNone ? byKey.find(newKey(new_[b.members[i]])) : byKey.end();
            if (found == byKey.end() || found->second.empty()) continue;
            matches[i] = found->second.back();
            isTaken[matches[i]] = true;
            found->second.pop_back();
        }
    };
    const auto behindCode = [](std::string_view bytes, const Outline::Record& record) {
        return bytes.substr(std::min(bytes.size(), CodeOf(record).bytes.size()));
    };
    using Record = Outline::Record;
    matchBy([&](const Record& r) { return old_.Bytes(r); }, [&](const Record& r) { return new_.Bytes(r); });
    matchBy([&](const Record& r) { return CodeOf(r).Text(); },
            [&](const Record& r) { return CodeOf(r).Text(); });
    for (std::size_t i = 0; i < matches.size(); ++i) {
        const std::size_t there = i == 0                    ? 0
                                  : matches[i - 1] == kNone ? a.members.size()
                                                            : matches[i - 1] + 1;
        if (matches[i] != kNone || there >= a.members.size() || isTaken[there]) continue;
        const Record &was = old_[a.members[there]], &is = new_[b.members[i]];
        if (behindCode(old_.Bytes(was), was) != behindCode(new_.Bytes(is), is)) continue;
        matches[i] = static_cast<std::uint32_t>(there);
        isTaken[there] = true;
    }
    return matches;
}

}  // namespace zel
