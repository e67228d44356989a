// The worked examples of the format's page are what the code reads and writes.

#include <fstream>
#include <sstream>

#include "DefinitionRecord.h"
#include "DrawingRecord.h"
#include "HexDump.h"
#include "Kind2Geometry.h"
#include "SketchFile.h"

namespace zel {
namespace {

// The bytes of the block ```hex NAME. A line is an offset, which must be right, bytes and, behind two blanks,
// a remark.
std::string Example(const std::string& name) {
    std::ifstream page(ZEL_FORMAT_PAGE);
    std::string line, bytes;
    while (std::getline(page, line) && line.rfind("```hex " + name, 0) != 0) continue;
    while (std::getline(page, line) && line.rfind("```", 0) != 0) {
        EXPECT_EQ(std::stoul(line, nullptr, 16), bytes.size()) << line;
        const std::size_t begin = line.find("  ") + 2;
        bytes += Hex(line.substr(begin, line.find("  ", begin) - begin));
    }
    return bytes;
}

template <class Piece>
void ExpectExample(Piece& piece, Piece& empty, const std::string& name) {
    const std::string bytes = Example(name);
    EXPECT_TRUE(SameBytes(bytes, Written(piece)));
    EXPECT_EQ(ReadFrom(empty, bytes), 0u);
    EXPECT_TRUE(SameBytes(bytes, Written(empty)));
}

TEST(FormatPage, ShowsADefinitionFile) {
    SketchFile file, empty;
    HeaderImage& image = file.header.image;
    image.Flags = FileHeader::kProgramVersionFlag;
    image.CreationDate = 146463, image.CreationTime = 36000, image.CreatedBy.Put("Jo");
    image.ModifiedDate = 146464, image.ModifiedTime = 36060, image.LastModifiedBy.Put("Jo");
    image.ProgramVersionSignature.Put("2.1");
    file.DefinitionType = 2;
    file.FileFlags = 1;
    DefinitionRecord& record = file.definitions.Append();
    DefinitionBlock& block = record.block;
    record.AreaCode.text = "GLA1";
    record.SubtractAreaCode.text = "GAR";
    block.AreaName.Put("First Floor");
    block.SegmentStyle.Put("SOLID");
    block.Multiplier = 1.0, block.WallWidth = 0.5, block.WallHeight = 8.0;
    block.FillPattern = 2, block.LineColor = 7, block.FillColor = 12;
    block.CalcType = block.PostDescription = block.PostArea = 1;
    ExpectExample(file, empty, "definition-file");
}

TEST(FormatPage, ShowsADrawing) {
    DrawingRecord drawing, empty;
    drawing.SetVersion(24);
    empty.SetVersion(24);
    AreaRecord& area = drawing.Areas.Append();
    area.AreaCode.text = "SITE";
    area.Label.text = "Lot";
    area.Description.text = "A lot";
    area.Measure1 = 120.5;
    area.Measure2 = 1.0, area.Measure3 = 2.0, area.Measure4 = 3.0, area.Measure5 = 4.0;
    area.LinkIndex = AreaRecord::kNoLink;
    area.ExtraValue = 7;
    area.TypeByte = area.Option1 = 1, area.Option2 = 2, area.Option3 = 3;
    for (const std::uint32_t index : {0, 4}) area.MemberIndices.Append() = index;
    area.Word1 = 1, area.Word2 = 2, area.Word3 = 3, area.Long1 = 4, area.Long2 = 5, area.Long3 = 6;
    drawing.DrawingExtent[0] = 40.0, drawing.DrawingExtent[1] = 30.0;
    drawing.DrawingLong1 = 1, drawing.DrawingLong2 = 2, drawing.DrawingLong3 = 3, drawing.DrawingLong4 = 4;
    EntityRecord& entity = drawing.Entities.Append(2);
    auto line = std::make_unique<Kind2Geometry>();
    entity.AnchorA = line->First = {1.0, 2.0};
    entity.AnchorB = line->Second = {40.0, 30.0};
    entity.EntityMeasure1 = 50.0, entity.EntityMeasure2 = 3.0, entity.EntityMeasure3 = 4.0;
    entity.EntityShort = -1;
    entity.PrimaryStyle.Put("BYLAYER");
    entity.SecondaryStyle.Put("Dashed");
    entity.Geometry = std::move(line);
    entity.OrderIndex = 3;
    ExpectExample(drawing, empty, "drawing");
}

}  // namespace
}  // namespace zel
