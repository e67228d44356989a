#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "zel/edit/Editor.h"
#include "zel/survey/Checker.h"
#include "zel/survey/Field.h"

namespace zel {

// A definition file as the page shows and edits it: its bytes, where each definition stands in them, what is
// folded, and the changes that can be undone. Answers are JSON texts; a call that cannot do what it is asked
// throws Failure and changes nothing. Definitions are rows, counted from 0 in file order at all levels;
// kHeader is the header with all that belongs to no definition.
class Document {
public:
    static constexpr std::int32_t kHeader = -1;

    explicit Document(std::string bytes);

    const std::string& bytes() const { return bytes_; }

    // Size, version, counts, findings, what can be done, and the row that the last change left selected.
    std::string Summary() const;
    // Of the rows that are not folded away, `count` from the given one; at most those there are.
    std::string Rows(std::size_t from, std::size_t count) const;
    std::string AllRows() const;
    // The fields of a row with their values, limits and bytes.
    std::string Fields(std::int32_t row) const;
    std::string FieldAt(std::size_t offset) const;
    // Shows or hides what is below a row.
    void Fold(std::int32_t row, bool isOpen);
    // Where a row stands among those not folded away; opens what hides it.
    std::size_t IndexOf(std::int32_t row);
    // The next field, from the one found last on, that has the text in its value, its name or its code.
    std::string Find(const std::string& text, bool isForward);

    // Changes. `value` is UTF-8, as a person types it.
    void Set(std::int32_t row, const std::string& name, const std::string& value);
    void Add(std::int32_t behind);
    void Remove(std::int32_t row);
    void Move(std::int32_t row, std::int32_t by);
    void Undo();
    void Redo();
    // What is there now is what the user has on the disk.
    void MarkSaved() { saved_ = done_; }

    // What a file of another version would lose, a line each; and that file.
    std::string Losses(std::int32_t version) const;
    std::string Converted(std::int32_t version) const;
    std::string Differences(const Document& other) const;
    std::string AsJson() const;
    std::string AsCsv(const std::string& name) const;

private:
    // A definition; offsets are those of the file.
    struct Row {
        std::string_view list;  // the name of the list it stands in
        std::size_t offset;     // of its first field
        std::size_t members;    // of the opening of its members
        std::size_t end;
        std::int32_t parent;
        std::uint32_t position;  // among its siblings
        std::uint32_t level;     // 1 at the top
        std::uint32_t children = 0;
        bool isOpen = true;
    };
    // Bytes that took the place of others.
    struct Change {
        std::size_t offset;
        std::string removed;
        std::string inserted;
        std::int32_t before;  // the row selected
        std::int32_t after;
        std::string what;
    };
    // A field of no definition, with bytes of its own.
    struct KeptField {
        explicit KeptField(const Field& shown) : field(shown), bytes(shown.bytes) {}
        Field field;
        std::string bytes;
    };
    class Indexer;
    static constexpr std::size_t kNever = SIZE_MAX;

    void Index();
    void ShowRows();
    Row& At(std::int32_t row) { return rows_.at(static_cast<std::size_t>(row)); }
    const Row& At(std::int32_t row) const { return rows_.at(static_cast<std::size_t>(row)); }
    Place PlaceOf(std::int32_t row) const;
    // Without their place where nobody asks for it: it takes time in the depth of the row.
    void EachField(std::int32_t row, FieldVisitor& visitor, const Place& place = {}) const;
    std::int32_t RowAt(std::size_t offset) const;
    nlohmann::ordered_json RowOf(std::int32_t row) const;
    std::string PathOf(std::int32_t row) const;
    std::string ListOf(std::int32_t row) const;
    std::int32_t RowIn(std::int32_t parent, std::int64_t position) const;
    std::size_t EndOf(std::int32_t row) const;
    void Exchange(const Editor::Edit& edit, std::int32_t row);
    void Apply(std::size_t offset, std::size_t size, const std::string& inserted, std::int32_t row);

    std::string bytes_;
    std::int32_t version_ = 0;
    std::vector<KeptField> header_;
    std::vector<Row> rows_;
    Findings findings_;
    std::set<std::int32_t> faulty_;    // the rows with damage
    std::vector<std::int32_t> shown_;  // rows not folded away
    std::vector<Change> changes_;
    std::size_t done_ = 0;   // of the changes, those not undone
    std::size_t saved_ = 0;  // how many were done when it was saved
    std::int32_t selected_ = kHeader;
    std::string said_;
    std::int32_t foundRow_ = kHeader;
    std::size_t foundOffset_ = 0;
};

}  // namespace zel
