// How a document is changed, and the changes undone.

#include <algorithm>

#include "Document.h"
#include "zel/text/Failure.h"

namespace zel {

void Document::Undo() {
    if (done_ == 0) throw Failure(kUnusable, "there is nothing to undo");
    const Change& change = changes_[--done_];
    Apply(change.offset, change.inserted.size(), change.removed, change.before);
    said_ = "Undone: " + change.what;
}

void Document::Redo() {
    if (done_ == changes_.size()) throw Failure(kUnusable, "there is nothing to redo");
    const Change& change = changes_[done_++];
    Apply(change.offset, change.removed.size(), change.inserted, change.after);
    said_ = "Done again: " + change.what;
}

// Takes other bytes as the file's and keeps the difference, for undoing.
void Document::Exchange(const Editor::Edit& edit, std::int32_t row) {
    if (edit.changes.empty()) return;
    const std::string& bytes = edit.file;
    const std::size_t most = std::min(bytes.size(), bytes_.size());
    const auto first = static_cast<std::size_t>(
        std::mismatch(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(most), bytes.begin())
            .first -
        bytes_.begin());
    std::size_t last = 0;
    while (last < most - first && bytes[bytes.size() - 1 - last] == bytes_[bytes_.size() - 1 - last]) ++last;
    Change change{first,
                  bytes_.substr(first, bytes_.size() - last - first),
                  bytes.substr(first, bytes.size() - last - first),
                  selected_,
                  row,
                  edit.changes.front()};
    if (saved_ > done_) saved_ = kNever;
    changes_.resize(done_);
    changes_.push_back(std::move(change));
    Redo();
    said_ = changes_.back().what;
}

void Document::Apply(std::size_t offset, std::size_t size, const std::string& inserted, std::int32_t row) {
    bytes_.replace(offset, size, inserted);
    Index();
    selected_ = std::min(row, static_cast<std::int32_t>(rows_.size()) - 1);
}

// "Definitions[2].Members[0]", however deep; for kHeader nothing.
std::string Document::PathOf(std::int32_t row) const {
    std::string path;
    for (const Level& level : PlaceOf(row))
        path.append(path.empty() ? "" : ".").append(level.list) += '[' + std::to_string(level.index) + ']';
    return path;
}

// The list that a row stands in.
std::string Document::ListOf(std::int32_t row) const {
    if (row == kHeader) return "Definitions";
    const std::string path = PathOf(row);
    return path.substr(0, path.rfind('['));
}

// A definition of the list by its position; kHeader where there is none.
std::int32_t Document::RowIn(std::int32_t parent, std::int64_t position) const {
    for (auto row = static_cast<std::size_t>(std::int64_t{parent} + 1); row < EndOf(parent); ++row)
        if (rows_[row].parent == parent && rows_[row].position == position)
            return static_cast<std::int32_t>(row);
    return kHeader;
}

void Document::Set(std::int32_t row, const std::string& name, const std::string& value) {
    std::string path = name;
    if (row != kHeader) path = PathOf(row) + '.' + name;
    for (const KeptField& kept : header_)
        if (row == kHeader && kept.field.isOfHeader && kept.field.name == name) path = "Header." + name;
    Exchange(Editor::Set(bytes_, {path + '=' + value}, false), row);
}

// Behind the row, in its list; at the end of the outermost list where the header is selected.
void Document::Add(std::int32_t behind) {
    const std::int32_t parent = behind == kHeader ? kHeader : At(behind).parent;
    const std::int32_t next =
        behind == kHeader ? kHeader : RowIn(parent, std::int64_t{At(behind).position} + 1);
    const std::string where = next == kHeader ? ListOf(behind) : PathOf(next);
    const auto end = static_cast<std::int32_t>(EndOf(behind));
    Exchange(Editor::Add(bytes_, where, {}), end);
}

void Document::Remove(std::int32_t row) {
    if (row == kHeader) throw Failure(kUnusable, "no definition is selected");
    Exchange(Editor::Remove(bytes_, {PathOf(row)}, false), row);
}

void Document::Move(std::int32_t row, std::int32_t by) {
    if (row == kHeader) throw Failure(kUnusable, "no definition is selected");
    const std::int64_t position = std::int64_t{At(row).position} + by;
    const std::int32_t parent = At(row).parent, other = RowIn(parent, position);
    if (position < 0 || other == kHeader) throw Failure(kUnusable, "there is no further place in this list");
    const std::string to = ListOf(row) + '[' + std::to_string(position) + ']';
    const std::size_t behindOther = EndOf(other) - (EndOf(row) - static_cast<std::size_t>(row));
    Exchange(Editor::Move(bytes_, PathOf(row), to), by < 0 ? other : static_cast<std::int32_t>(behindOther));
}

}  // namespace zel
