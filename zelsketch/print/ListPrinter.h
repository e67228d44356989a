#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "zel/survey/Field.h"
#include "zel/text/Palette.h"

namespace zel {

// Prints the definitions of files in one table, a line each, in file order: what people look for, members
// indented under their definition, or for spreadsheets all fields. What a file cuts short or its version
// lacks is left empty. Texts are UTF-8 and end where their readers see them end.
class ListPrinter : public FieldVisitor {
public:
    enum class Form {
        kPage,
        kCommas,  // CSV: cells in quotes where they need them
        kTabs,    // TSV: tabs, line ends and backslashes as \t, \n, \r and \\ in their cells
    };

    // The names of files are a column where their width is not 0; always for spreadsheets.
    ListPrinter(std::ostream& out, Form form, std::size_t fileWidth, const Palette& palette);

    // Of the next file.
    void SetFile(std::string_view name);
    // How many bytes it lacks.
    std::size_t Missing() const { return missing_; }
    // Passes on what has been printed.
    void Flush();

    void OnField(const Field& field) override;
    void OnRecord(const Place& place) override;

private:
    void PrintHeading();
    void PrintRow(const Place& place);
    void PrintPageRow(const Place& place);
    void PrintCells(const std::vector<std::string>& cells);
    void Cell(std::string_view text);
    std::string_view Of(std::string_view column) const;

    std::ostream& out_;
    const Form form_;
    const std::size_t fileWidth_;
    const Palette palette_;
    std::vector<std::string> columns_;  // the names of a definition's fields
    std::vector<std::string> cells_;    // their texts in the definition at hand
    std::size_t next_ = 0;              // the column of the next field, or one before it
    std::string file_;
    std::string buffer_;
    std::size_t missing_ = 0;
};

}  // namespace zel
