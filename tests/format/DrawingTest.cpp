// Every record of a drawing at every version, against layouts that state each gate on their own.

#include <gmock/gmock.h>

#include <cstdio>

#include "zel/drawing/DrawingRecord.h"
#include "HexDump.h"

namespace zel {
namespace {

constexpr int kNewest = 26;

// The bytes of a layout at a version. "{3-9: 01 02}" stands in the versions 3 to 9, "{10-: 03}" from 10 on.
std::string BytesAt(int version, const std::string& layout) {
    std::string present;
    std::size_t from = 0;
    for (std::size_t open = 0; (open = layout.find('{', from)) != std::string::npos;) {
        int first = 0, last = kNewest;
        const std::size_t colon = layout.find(':', open), close = layout.find('}', open);
        std::sscanf(layout.substr(open, colon - open).c_str(), "{%d-%d", &first, &last);
        present.append(layout, from, open - from);
        if (first <= version && version <= last) present.append(layout, colon + 1, close - colon - 1);
        from = close + 1;
    }
    return Hex(present.append(layout, from));
}

// In the layouts every field has a value of its own.

std::string Area(const std::string& link) {
    return "{0-6: 19 00}{7-7: 04 'SITE' 00}{8-: 06 04 'SITE'}{13-: 06 05 'Label'} 01 11*8 12*8 13*8 14*8" +
           (" 15*8 " + link) + "{12-: 21 22 23 24} 31 32 33 06 04 'Text'{22-: 06 05 'Style'}{22-23: 04 01}" +
           "{24-: 01 05 01 00 00 01 00 00 00 00} 41 42{3-: 43 44}{10-: 45 46}" +
           "{16-: 51 52 53 54 55 56 57 58}{23-: 59 5A 5B 5C} 01 00";
}
const std::string kNoLink = "{0-10: 00 00}{11-: FF FF}";

std::string Auxiliary(const std::string& mode, const std::string& extra) {
    return "{9-: " + mode + "} 06 04 'Name' 11*4 12*16 {0-20: FE FF 70 11 01 80 FF 7F 05 00}" +
           "{21-: FE FF FF FF 70 11 01 00 01 80 FF FF FF 7F 00 00 05 00 00 00}" +
           "13*8 14*32 15*8 16*8 17 18*8 " + extra;
}

// The order of an entity that was read at 5, then written at each version from the newest down.
const std::string kOrder = "{0-0: 02 00}{1-1: 03 00}{2-2: 04 00}{3-: 05 00}";

std::string Entity(const std::string& kind, const std::string& geometry, const std::string& order = kOrder) {
    return kind + "11*8 12*8 13*8 14*8 15*8 FE FF 16*8 17*8 FD 00 04 'Dash' " + geometry + ' ' + order;
}

// All kinds but 1, whose bytes depend on the version that they were read with.
const std::string kEntities =
    "00 0B 00" + Entity("00 00", "") + Entity("05 00", "") + Entity("FE FF", "") +
    Entity("02 00", "21*8 22*8 23*8 24*8") + Entity("03 00", "21*8 22*8 23*8") +
    Entity("04 00", "21*8 22*8 23*8 24*8 25*8") + Entity("0E 00", "21*24 22*8 23*8 24*8") +
    Entity("07 00", "21*8 22*8 23*8 2C 01 61*300 24*8 25*8 26*8 03 'abc'") +
    Entity("0D 00", "FF 7F 21*8 22*8 00 01 00" + Entity("03 00", "23*8 24*8 25*8", "00 00")) +
    Entity("17 00", "03 'abc' 21*8 22*8 23*8 24*8 25*8 00 02 00 0C 00 0C 00") +
    Entity("23 00", "21*24 22*8 23*8 24*8 25*8 26*8");

const std::string kStyle = "05 'Group' 06 01 11 00 05 'Dash2' 12*4 13*4 14*4 15*4 " + kEntities;
const std::string kAuxiliary = Auxiliary("01", "{4-8: 00}");
const std::string kDrawing = "01" + Area(kNoLink) + Area("05 00") + "00 01" + kAuxiliary + kAuxiliary +
                             "00 01" + kStyle + kStyle +
                             " 00 {2-: 21*8 22*8 23*8}{14-: 24*4 25*4 26*4}{15-: 27*4} " + kEntities +
                             "00 02 00 09 00" + kStyle + "09 00" + kStyle;

// Read, copied and written at each version, and written at each after being read at the newest.
template <class Piece>
void ExpectLayout(const Piece& fresh, const std::string& layout) {
    Piece newest(fresh);
    newest.SetVersion(kNewest);
    ReadFrom(newest, BytesAt(kNewest, layout));
    for (int version = kNewest; version >= 0; --version) {
        const std::string bytes = BytesAt(version, layout);
        Piece read(fresh), copy;
        read.SetVersion(version);
        EXPECT_EQ(ReadFrom(read, bytes), 0u) << "version " << version;
        copy = Piece(read);
        EXPECT_TRUE(SameBytes(bytes, Written(copy))) << "version " << version;
        newest.SetVersion(version);
        EXPECT_TRUE(SameBytes(bytes, Written(newest))) << "from the newest to " << version;
    }
}

TEST(DrawingRecord, HoldsItsRecordsAtEveryVersion) { ExpectLayout(DrawingRecord(), kDrawing); }

TEST(DrawingRecord, CutAnywhereFailsTheStreamAndNothingElse) {
    for (const int version : {0, 7, 8, 22, 26}) {
        DrawingRecord drawing;
        drawing.SetVersion(version);
        const std::string bytes = BytesAt(version, kDrawing);
        for (std::size_t cut = 1; cut <= bytes.size(); cut += CutStep(bytes)) {
            std::istringstream stream(bytes.substr(0, bytes.size() - cut));
            drawing.Read(stream);
            ASSERT_TRUE(stream.eof() && stream.fail()) << "version " << version << ", less " << cut;
            Written(drawing);
        }
    }
}

TEST(AuxiliaryRecord, HasItsExtraByteInModeTwoAndWidensItsValues) {
    AuxiliaryRecord record;
    record.AuxMode = 2;
    ExpectLayout(record, Auxiliary("02", "19"));
    record.SetVersion(20);
    ReadFrom(record, BytesAt(20, kAuxiliary));
    EXPECT_EQ(record.AuxValue1, -2);
}

TEST(AreaRecord, KeepsWhatAVersionLacksAndAddsItsOneMember) {
    AreaRecord area;
    const auto readAt = [&area](int version) {
        area.SetVersion(version);
        ReadFrom(area, BytesAt(version, Area(kNoLink)));
    };
    readAt(kNewest);
    for (int version = 0; version < 22; ++version) {
        readAt(version);
        area.SetVersion(kNewest);
        EXPECT_TRUE(SameBytes(BytesAt(kNewest, Area(kNoLink)), Written(area))) << "version " << version;
    }
    readAt(22);
    EXPECT_THAT(area.MemberIndices.Elements(), testing::ElementsAre(0x104, 0, 0x104));
    area.MemberIndices.Clear();
    ReadFrom(area, Written(area));
    EXPECT_THAT(area.MemberIndices.Elements(), testing::ElementsAre(0)) << "none is written as 0";
}

TEST(AreaRecord, OfANumberThatIsCutTheByteThatCameCounts) {
    const auto read = [](int version, const std::string& bytes) {
        AreaRecord record;
        record.SetVersion(version);
        record.LinkIndex = AreaRecord::kNoLink;
        ReadFrom(record, Hex(bytes));
        return record;
    };
    EXPECT_EQ(read(6, "19").AreaCode.text, "SITE");
    EXPECT_EQ(read(10, "06 00 01 00*40 05").LinkIndex, 0xff05);
    EXPECT_EQ(*read(22, "06 00 06 00 00*50 06 00 06 00 07").MemberIndices.begin(), 7u);
    StyleAttributeRecord style;
    ReadFrom(style, Hex("05 'ab'"));
    EXPECT_EQ(style.GroupName.Text(), "ab");
    LongString text;
    text.text = "old";
    EXPECT_EQ(ReadFrom(text, Hex("00 80 'x'")), 1u) << "a negative count is none";
    EXPECT_EQ(text.text, "old");
    ReadFrom(text, "\3");
    EXPECT_EQ(text.text, "");
}

TEST(AreaRecord, NumbersItsCodesUpToVersion6) {
    std::string codes;
    AreaRecord record;
    record.SetVersion(6);
    for (int number = 0; number < 300; ++number) {
        const std::string bytes{static_cast<char>(number), static_cast<char>(number / 256)};
        record.AreaCode.text = "gla1";
        ReadFrom(record, bytes);
        if (record.AreaCode.text != "gla1") codes += record.AreaCode.text + ' ';
        EXPECT_TRUE(SameBytes(number < 30 ? bytes : Hex("00 00"), Written(record).substr(0, 2))) << number;
    }
    EXPECT_EQ(codes,
              "GLA1 GLA2 GLA3 GLA4 GLA5 GLA6 GLA7 GLA8 GLA9 GLA0 GBA1 GBA2 GBA3 GBA4 GBA5 GBA6 GBA7 GBA8 "
              "GBA9 GBA0 BSMT P/P GAR LAND SITE OTH NCA FF WIN ");
}

TEST(AreaRecord, CutsItsCodesInVersion7) {
    const auto expectWritten = [](const std::string& code, const char* read, const char* written) {
        AreaRecord record;
        record.SetVersion(7);
        record.AreaCode.text = code;
        if (read) ReadFrom(record, Hex(read));
        EXPECT_TRUE(SameBytes(Hex(written), Written(record).substr(0, 6))) << written;
    };
    expectWritten("old", "03 'GARXY'", "03 'GAR' 00 00");
    for (const char* read : {"05 'GLA1X'", "09 'GLA1X'", "80 'GLA1X'"}) expectWritten("", read, "05 'GLA1X'");
    expectWritten("old", "FF 'GL' 00 '1X'", "02 'GL' 00*3");
    for (const char* read : {"", "00 'GLA1X'"}) expectWritten("old", read, "00*6");
    expectWritten(std::string(128, 'c'), nullptr, "05 'ccccc'");
    expectWritten(std::string(256, 'c'), nullptr, "00*6");
    expectWritten(std::string(258, 'c'), nullptr, "02 'cc' 00*3");
}

}  // namespace
}  // namespace zel
