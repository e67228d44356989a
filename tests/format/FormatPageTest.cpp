// The worked examples of the format's page are what the code reads and writes.

#include <fstream>
#include <sstream>

#include "zel/drawing/DrawingRecord.h"
#include "HexDump.h"
#include "zel/definition/SketchFile.h"

namespace zel {
namespace {

// Reads the block ```hex NAME and writes it again. A line is an offset, which must be right, bytes and,
// behind two blanks, a remark.
template <class Piece>
Piece Example(const std::string& name, Piece piece) {
    std::ifstream page(ZEL_FORMAT_PAGE);
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
