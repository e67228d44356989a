// The drawing of a sketch, shown by the walk that reads it.

#include <algorithm>
#include <limits>
#include <random>

#include "zel/drawing/DrawingRecord.h"
#include "zel/drawing/Kind13Geometry.h"
#include "zel/drawing/Kind23Geometry.h"
#include "zel/drawing/Kind2Geometry.h"
#include "zel/drawing/Kind7Geometry.h"
#include "zel/survey/Surveyor.h"
#include "Tool.h"
#include "format/HexDump.h"

namespace zel {
namespace {

void AddEntities(TypedRecordList<EntityRecord>& list, int version, bool nested) {
    for (const std::int16_t kind : {0, 1, 2, 3, 4, 7, 13, 14, 23, 35}) {
        EntityRecord& entity = list.Append(kind);
        entity.AnchorB.X = 100.0 + kind;
        entity.PrimaryStyle.Put("BYLAYER");
        entity.SecondaryStyle.Put("Dashed");
        entity.OrderIndex = 3;
        entity.Geometry = EntityGeometry::Make(kind);
        if (entity.Geometry) entity.Geometry->SetVersion(version);
        if (auto* text = dynamic_cast<Kind7Geometry*>(entity.Geometry.get())) text->Text.text = "Room";
        if (auto* named = dynamic_cast<Kind23Geometry*>(entity.Geometry.get())) named->Records.Resize(2);
        if (auto* group = dynamic_cast<Kind13Geometry*>(entity.Geometry.get()); group && nested)
            AddEntities(group->Entities, version, false);
    }
}

// Every record with every kind of entity.
std::string DrawingOf(int version) {
    DrawingRecord drawing;
    drawing.SetVersion(version);
    AreaRecord& area = drawing.Areas.Append();
    area.AreaCode.text = "SITE";
    for (const std::uint32_t member : {0, 4}) area.MemberIndices.Append() = member;
    AuxiliaryRecord& auxiliary = drawing.Auxiliaries.Append();
    auxiliary.AuxMode = 2;
    auxiliary.AuxValue1 = -2;
    StyleAttributeRecord& style = drawing.Styles.Append();
    style.GroupName.Put("Group");
    style.GroupStyle.Put("S1");
    AddEntities(style.Members, version, true);
    drawing.DrawingLong4 = 0xFFFFFFFF;
    AddEntities(drawing.Entities, version, true);
    drawing.TypedStyles.Append(9).GroupStyle.Put("Dashed");
    return Written(drawing);
}

// What a survey shows, put together again, and how much of it no reader looks at.
struct Shown : FieldVisitor {
    void OnField(const Field& field) override {
        bytes += field.bytes.substr(0, field.present);
        if (field.kind == FieldKind::kLeftOver) leftOver = field.bytes.size();
        if (field.Missing()) isCut = true;
    }
    std::string bytes;
    std::size_t leftOver = 0;
    bool isCut = false;
};

// Every byte is shown once, and those of a whole drawing as its reader takes them.
testing::AssertionResult ShowsWhatIsRead(const std::string& bytes, int version) {
    Shown shown;
    Surveyor::SurveyDrawing(bytes, version, shown);
    if (auto same = SameBytes(bytes, shown.bytes); !same) return same;
    DrawingRecord drawing;
    drawing.SetVersion(version);
    std::istringstream stream(bytes);
    drawing.Read(stream);
    if (stream.good() == shown.isCut) return testing::AssertionFailure() << "cut: " << shown.isCut;
    const auto left = static_cast<std::size_t>(stream.rdbuf()->in_avail());
    if (stream.good() && left != shown.leftOver)
        return testing::AssertionFailure() << shown.leftOver << " left over, not " << left;
    return testing::AssertionSuccess();
}

TEST(Drawing, OddDrawingsOfEveryVersionAreShownAsTheyAreRead) {
    std::mt19937 random(741);
    for (int version = 0; version <= 26; ++version) {
        const std::string whole = DrawingOf(version);
        ASSERT_TRUE(ShowsWhatIsRead(whole, version)) << version;
        for (int i = 0; i < 60; ++i) {
            std::string odd = whole.substr(0, i % 2 ? whole.size() : random() % whole.size());
            for (int change = 0; change < 3 && !odd.empty(); ++change)
                odd[random() % odd.size()] = "\0\1\2\xFD\xFF\x10"[random() % 6];
            ASSERT_TRUE(ShowsWhatIsRead(odd, version)) << version;
        }
    }
}

TEST_F(ToolTest, ShowsADrawingInsideAFile) {
    Put("f", "ab" + DrawingOf(5) + "c");
    std::string page = Zelsketch({"show", "--drawing", "5", "--at", "2", "f"}).out;
    const auto areBlanks = [](char a, char b) { return a == ' ' && b == ' '; };
    page.erase(std::unique(page.begin(), page.end(), areBlanks), page.end());
    for (const std::string expected :
         {"Areas[0]\n AreaCodeNumber 25 \"SITE\"\n", " AuxValue1 -2\n", "Styles[0].Members[6].Entities[5]\n",
          " Text \"Room\"\n", "Styles[0].Members[6], continued\n OrderIndex 3\n",
          "Drawing\n DrawingExtent 0, 0, 0\n", "Entities[4]\n EntityKind 4\n", " AnchorB 104, 0\n",
          " PrimaryStyle \"BYLAYER\"\n", "TypedStyles[0]\n TypeCode 9\n GroupName \"\"\n Constant 06 01\n",
          "Behind the end\n LeftOver 1 byte that no reader looks at\n"})
        EXPECT_NE(std::string::npos, page.find(expected)) << expected << " in\n" << page;
    const std::string hex = Zelsketch({"show", "--hex", "--drawing", "5", "--at", "2", "f"}).out;
    EXPECT_EQ(0u, hex.find("00000002  01 "));
    Put("g", Hex("(01 00)*3 00 FF 7F"));
    EXPECT_NE(std::string::npos,
              Zelsketch({"show", "--hex", "--drawing", "0", "g"}).out.find("list of 32767\n"));
    EXPECT_EQ("f has no byte 99999: it ends after",
              Zelsketch({"show", "--drawing", "5", "--at", "99999", "f"}).error.substr(11, 34));
}

// An entity with a style and the points that its kind has, each at its place.
EntityRecord& AddAt(TypedRecordList<EntityRecord>& list, std::int16_t kind, const char* style, double at) {
    EntityRecord& entity = list.Append(kind);
    entity.AnchorA = entity.AnchorB = {at, 2 * at};
    entity.PrimaryStyle.Put(style);
    entity.Geometry = EntityGeometry::Make(kind);
    return entity;
}

std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
    return count;
}

TEST_F(ToolTest, PicturesAreToScale) {
    DrawingRecord drawing;
    drawing.SetVersion(24);
    EntityRecord& group = AddAt(drawing.Entities, 13, "<W&ll>", 0);
    EntityRecord& inner = AddAt(dynamic_cast<Kind13Geometry&>(*group.Geometry).Entities, 2, "BYLAYER", 10);
    dynamic_cast<Kind2Geometry&>(*inner.Geometry).First = {3, 150};
    dynamic_cast<Kind2Geometry&>(*inner.Geometry).Second = {std::numeric_limits<double>::quiet_NaN(), 1};
    inner.AnchorB.Y = 1e300;
    EntityRecord& outer = AddAt(drawing.Entities, 13, "<W&ll>", 5);
    AddAt(*AddAt(*outer.Nested(), 13, "BYLAYER", 6).Nested(), 0, "BYLAYER", 7);
    Put("f", Written(drawing));
    const std::string svg = Zelsketch({"show", "--drawing", "24", "--svg", "f"}).out;
    // 150 high, so that a mark is 1 wide.
    EXPECT_NE(std::string::npos, svg.find("viewBox=\"-8 -8 66 176\"")) << svg;
    for (const std::string expected :
         {"<title>Entities[0], kind 13, style &lt;W&amp;ll></title>\n<rect x=\"-2\" y=\"-2\" width=\"14\" "
          "height=\"154\" fill=\"none\"",
          "<title>Entities[0].Entities[0], kind 2, style BYLAYER</title>\n<rect x=\"9.5\" y=\"19.5\" "
          "width=\"1\"",
          "<title>Entities[1].Entities[0], kind 13, style BYLAYER</title>\n<rect x=\"4\" y=\"10\" "
          "width=\"5\" height=\"6\"",
          "<circle cx=\"3\" cy=\"150\" r=\"0.5\"/>", "<text x=\"11\" y=\"19\">2</text>",
          "2 points too far away to be drawn"})
        EXPECT_EQ(1u, Count(svg, expected)) << expected << " in\n" << svg;
    EXPECT_EQ(1u,
              Count(Zelsketch({"show", "--drawing", "24", "--json", "f"}).out, "\"SecondBits\": [\"0x7ff8"));
    EXPECT_EQ(2u, Count(svg, "<g fill=\"#b31a1a\"")) << "one colour a style";
    EXPECT_EQ(1u, Count(svg, "fill=\"#b31a1a\">&lt;W&amp;ll></text>")) << "and its name";
    EXPECT_EQ(5u, Count(svg, "</g>"));
}

}  // namespace
}  // namespace zel
