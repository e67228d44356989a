// What the pages tell of the format is what the code reads and writes: tables, worked examples, versions.

#include <fstream>
#include <regex>
#include <sstream>
#include <vector>

#include "zel/definition/DefinitionRecord.h"
#include "zel/drawing/DrawingRecord.h"
#include "HexDump.h"
#include "zel/definition/SketchFile.h"

namespace zel {
namespace {

// Reads the block ```hex NAME and writes it again. A line is an offset, which must be right, bytes and,
// behind two blanks, a remark.
template <class Piece>
Piece Example(const std::string& name, Piece piece) {
    std::ifstream page(ZEL_PAGES "docs/format.md");
    std::string line, bytes;
    while (std::getline(page, line) && line.rfind("```hex " + name, 0) != 0) continue;
    while (std::getline(page, line) && line.rfind("```", 0) != 0) {
        EXPECT_EQ(std::stoul(line, nullptr, 16), bytes.size()) << line;
        const std::size_t begin = line.find("  ") + 2;
        bytes += Hex(line.substr(begin, line.find("  ", begin) - begin));
    }
    EXPECT_EQ(ReadFrom(piece, bytes), 0u);
    EXPECT_TRUE(SameBytes(bytes, Written(piece)));
    return piece;
}

using Cells = std::vector<std::string>;

// The rows of the first table under a heading of docs/format.md, without its title row. Numbers are compared
// by their width: their sign is of no interest.
std::vector<Cells> Table(const std::string& heading) {
    std::ifstream page(ZEL_PAGES "docs/format.md");
    std::string line;
    while (std::getline(page, line) && line != heading) continue;
    while (std::getline(page, line) && line.rfind("|---", 0) != 0) continue;
    std::vector<Cells> rows;
    while (std::getline(page, line) && line.rfind("| ", 0) == 0) {
        line = std::regex_replace(line, std::regex(R"(\bi(\d))"), "u$1");
        const std::regex cell(R"(\| ([^|]*?) ?(?=\|))");
        Cells& cells = rows.emplace_back();
        for (std::sregex_iterator at(line.begin(), line.end(), cell), end; at != end; ++at)
            cells.push_back((*at)[1]);
    }
    return rows;
}

// An archive that notes how a table would show the fields it is given.
struct Noting {
    static constexpr bool kReads = false;

    void SetVersion(std::int32_t) {}
    void Note(const std::string& width, const std::string& field) { rows.push_back({width, field, version}); }
    static std::string Quoted(const char* name) { return '`' + std::string(name) + '`'; }

    template <class T>
    void Field(const LittleEndian<T>&, const char* name) {
        Note(std::is_floating_point_v<T> ? "real" : 'u' + std::to_string(8 * sizeof(T)), Quoted(name));
    }
    void Field(std::uint8_t, const char* name) { Note("u8", Quoted(name)); }
    template <std::size_t n>
    void Field(const CountedText<n>&, const char* name) {
        Note(std::to_string(n), Quoted(name) + ", `CountedText`");
    }
    template <std::size_t n>
    void Field(const FixedText<n>&, const char* name) {
        Note(std::to_string(n), Quoted(name) + ", `FixedText`");
    }
    void Field(const ShortString&, const char* name) { Note("2 + c", Quoted(name) + ", `ShortString`"); }
    void Field(DefinitionBlock& block, const char*) { block.EachField(*this); }
    template <class T>
    void Since(std::int32_t introduced, T& field, const char* name) {
        version = std::to_string(introduced);
        Field(field, name);
        version = "always";
    }

    std::vector<Cells> rows;
    std::string version = "always";
};

TEST(FormatPage, ListsTheFieldsOfADefinitionFile) {
    Noting definition;
    DefinitionRecord().Head(definition);
    definition.Note("2 + n", "`Members`, a marked list of definitions");
    for (std::size_t i = 0; i < definition.rows.size(); ++i)
        definition.rows[i].insert(definition.rows[i].begin(), std::to_string(i + 1));
    EXPECT_EQ(definition.rows, Table("### Definition"));

    Noting file;
    SketchFile().Trailer(file);
    std::vector<Cells> between = Table("## Definition file");
    for (Cells& row : between) row.erase(row.begin());
    EXPECT_EQ(file.rows, std::vector<Cells>(between.begin() + 1, between.end() - 1));

    Noting header;
    FileHeader whole;
    whole.image.EachMandatoryField(header);
    for (const int flag : {0x10, 0x100}) {
        header.version = flag == 0x10 ? "with flag 0x10" : "with flag 0x100";
        whole.image.Flags = flag;
        whole.OptionalSections(header);
    }
    std::vector<Cells> ofPage = Table("### Header");
    std::size_t offset = 0;
    ASSERT_EQ(header.rows.size(), ofPage.size());
    for (std::size_t i = 0; i < ofPage.size(); ++i) {
        const Cells& row = header.rows[i];
        const bool optional = row[2] != "always";
        EXPECT_EQ(ofPage[i].at(0), optional ? "" : std::to_string(offset));
        EXPECT_EQ(Cells(ofPage[i].begin() + 1, ofPage[i].begin() + 3), Cells(row.begin(), row.begin() + 2));
        EXPECT_EQ(optional ? ofPage[i].at(3) : row[2], row[2]);
        offset += row[0][0] == 'u' ? std::stoul(row[0].substr(1)) / 8 : std::stoul(row[0]);
    }
}

// How many bytes the fields of a table take in an empty record of a version.
std::size_t WidthOf(const std::vector<Cells>& table, int version) {
    std::size_t size = 0;
    for (const Cells& row : table) {
        std::smatch width, range;
        EXPECT_TRUE(
            std::regex_match(row.at(1), width, std::regex(R"((?:(\d+) )?(u|real)?(\d*)( raw| \+ .*)?)")));
        EXPECT_TRUE(std::regex_search(row.at(3), range,
                                      std::regex(R"(^(all|always|(\d+)(?: to | and up|, |;|$)(\d*)))")));
        const std::size_t number = width[2].matched ? 0 : std::stoul(width[3]);
        const std::size_t one = width[2] == "real" ? 8 : width[2] == "u" ? std::stoul(width[3]) / 8 : number;
        const int from = range[2].matched ? std::stoi(range[2]) : 0;
        const bool upwards = !range[2].matched || row[3].find("and up") != std::string::npos;
        const int last = range[3].length() ? std::stoi(range[3]) : upwards ? version : from;
        if (version >= from && version <= last) size += one * (width[1].matched ? std::stoul(width[1]) : 1);
    }
    return size;
}

TEST(FormatPage, TellsTheWidthsOfDrawingsOfEachVersion) {
    for (int version = 0; version <= 26; ++version) {
        AreaRecord area;
        area.SetVersion(version);
        EXPECT_EQ(Written(area).size(), WidthOf(Table("### Area"), version)) << version;
        AuxiliaryRecord auxiliary;
        auxiliary.SetVersion(version);
        EXPECT_EQ(Written(auxiliary).size(), WidthOf(Table("### Auxiliary"), version)) << version;
    }
}

TEST(Pages, NameTheVersionsThatAreKnown) {
    const std::tuple<const char*, const char*, std::int32_t> mentions[] = {
        {"docs/format.md", "versions 0 to (\\d+)", SketchFile::kNewestVersion},
        {"docs/format.md", "New files have version (\\d+)", SketchFile::kVersionOfNewFiles},
    };
    for (const auto& [page, mention, version] : mentions) {
        std::ifstream file(ZEL_PAGES + std::string(page));
        std::string text{std::istreambuf_iterator<char>(file), {}};
        std::replace(text.begin(), text.end(), '\n', ' ');
        const std::regex pattern(mention);
        std::sregex_iterator at(text.begin(), text.end(), pattern), end;
        EXPECT_NE(at, end) << page << ": " << mention;
        for (; at != end; ++at) EXPECT_EQ(std::to_string(version), (*at)[1]) << page << ": " << at->str();
    }
}

template <class... Field>
std::string Values(const Field&... fields) {
    std::ostringstream text;
    ((text << static_cast<double>(fields) << ' '), ...);
    return text.str();
}

TEST(FormatPage, ShowsADefinitionFileAndADrawing) {
    Example("definition-file", SketchFile());
    DrawingRecord drawing;
    drawing.SetVersion(24);
    drawing = Example("drawing", drawing);
    const AreaRecord& a = *drawing.Areas.begin();
    const EntityRecord& e = *drawing.Entities.begin();
    EXPECT_EQ(Values(a.Measure1, a.Measure2, a.Measure3, a.Measure4, a.Measure5, a.LinkIndex, a.ExtraValue,
                     a.Option1, a.Option2, a.Option3, a.Word1, a.Word2, a.Word3, a.Long1, a.Long2, a.Long3,
                     drawing.DrawingLong1, drawing.DrawingLong2, drawing.DrawingLong3, drawing.DrawingLong4,
                     e.AnchorA.X, e.AnchorA.Y, e.AnchorB.X, e.AnchorB.Y, e.EntityMeasure1, e.EntityShort,
                     e.EntityMeasure2, e.EntityMeasure3, e.OrderIndex),
              "120.5 1 2 3 4 65535 7 1 2 3 1 2 3 4 5 6 1 2 3 4 1 2 40 30 50 -1 3 4 3 ");
}

}  // namespace
}  // namespace zel
