// What a file and its pieces read, keep and write.

#include "zel/definition/SketchFile.h"

#include "zel/definition/CalendarDate.h"
#include "zel/definition/DefinitionRecord.h"
#include "HexDump.h"

namespace zel {
namespace {

// Reads all but "rest"; what is held then, and a copy of it, writes `written`.
template <class Piece>
void ExpectPasses(Piece piece, const std::string& read, const std::string& written) {
    EXPECT_EQ(ReadFrom(piece, Hex(read + "'rest'")), 4u) << read;
    EXPECT_TRUE(SameBytes(Hex(written), Written(piece))) << read;
    Piece copy;
    copy = Piece(piece);
    EXPECT_TRUE(SameBytes(Hex(written), Written(copy))) << read;
}

TEST(FileHeader, SectionsFollowFlagsAndTheKindOfFile) {
    const std::string program = "02 'P1' 00*8 ", writers = "02 'C1' 00*18 02 'M1' 00*18 ",
                      both = program + writers;
    const struct {
        std::string flags, typeAndVersion, sections, flagsAfterReading;
    } cases[] = {
        {"00 00", "05 04", "", "00 00"},
        {"00 00", "05 05", both, "10 01"},
        {"00 00", "01 14", "", "00 00"},
        {"00 00", "01 15", program, "10 00"},
        {"01 00", "01 16", both, "11 01"},
        {"20 01", "02 FF", writers, "20 01"},
        // Modified in 2001, and still no version 2: the date that is looked at is another.
        {"EF 7F", "00 01", writers, "EF 7F"},
    };
    for (const auto& c : cases) {
        const std::string behind = "00 00" + c.typeAndVersion + "11*18 A8 3C 02 00 11*14 " + c.sections;
        ExpectPasses(FileHeader(), "01 'A' 00*9 40" + c.flags + behind,
                     "01 'A' 00*9 40" + c.flagsAfterReading + behind);
    }
    // Each CountedText ends where its count or the field does.
    ExpectPasses(FileHeader(), "09 EE*10 FF*43 00 EE*10 13 EE*20 14 EE*20",
                 "09 EE*9 00 FF*43 00 EE*9 00 13 EE*19 00 14 EE*19 00");
    ExpectPasses(FileHeader(), "0A EE*10 FF*43 01 EE*10 00 EE*20 01 EE*20",
                 "0A EE*9 00 FF*43 01 EE 00 EE*8 00 EE*19 00 01 EE 00 EE*18");
    FileHeader header;
    header.image.Flags = 0;
    header.image.Type = 5;
    header.SetVersion(0x1234505);
    EXPECT_TRUE(SameBytes(Hex("07 'TRN4WIN' 00*3 40 00*4 05 05 00*36"), Written(header))) << "adds no flags";
    // A copy is normalized, and so is what is written.
    header.image.Signature = {1, {'A', 'B'}};
    FileHeader copy(header), assigned;
    assigned = header;
    for (const FileHeader* one : {&copy, &assigned}) {
        EXPECT_EQ(one->GetVersion(), 0x1234505);
        EXPECT_EQ(one->image.Signature.characters[1], '\0');
    }
    EXPECT_TRUE(SameBytes(Hex("01 'A' 00"), Written(header).substr(0, 3)));
}

TEST(FileHeader, TicksOfDaysAndSeconds) {
    EXPECT_EQ(FileHeader::DateTimeToFileTime(0, 0), -316224000000000);
    EXPECT_EQ(FileHeader::DateTimeToFileTime(367, -1), 864000000000 - 10000000);
    EXPECT_EQ(FileHeader::FileTimeToDateTime(-1).day, 365);
    EXPECT_EQ(FileHeader::FileTimeToDateTime(-1).seconds, 86399);
    for (const auto& [day, expected] :
         {std::pair{-1, 0}, {0, 16010101}, {31, 16010201}, {36218, 17000301}, {146096, 20001231}}) {
        const CalendarDate date = CalendarDateOf(day * 864000000000);
        EXPECT_EQ(date.year * 10000 + date.month * 100 + date.day, expected);
    }
}

TEST(DefinitionRecord, FieldsArePresentFromTheirVersionAndTextsEnd) {
    DefinitionRecord record;
    record.AreaCode.text = "OLD";
    record.SetVersion(1);
    ExpectPasses(record, "07 00 EE*9 00 EE*20 01 EE*20 EE*16 1F EE*41 01 00",
                 "06 03 'OLD' EE*9 00 EE*19 00 01 EE 00 EE*18 EE*16 1F EE*31 00 EE*9 01 00");
    record.SetVersion(2);
    ExpectPasses(record, "FF 03 'A' 00 'B' EE*9 13 EE*20 14 EE*20 EE*16 20 EE*41 09 01 00",
                 "06 01 'A' EE*9 13 EE*19 00 14 EE*19 00 EE*16 20 EE*31 00 EE*9 09 01 00");
    record.SetVersion(3);
    ExpectPasses(record, "06 FF 'y'*255 EE*9 01 EE*20 FF EE*20 EE*16 01 EE*41 09 06 01 'S' 01 00",
                 "06 FF 'y'*255 EE*9 01 EE 00 EE*18 FF EE*19 00 EE*16 01 EE 00 EE*39 09 06 01 'S' 01 00");
    record.AreaCode.text.assign(259, 'x');
    EXPECT_TRUE(SameBytes(Hex("06 03 'x'*259 00*109 00 06 00 01 00"), Written(record)));
}

TEST(CountedText, PutCutsAndKeepsWhatStandsBehind) {
    CountedText<21> field;
    const auto expectBytes = [&field](std::string_view text, const char* bytes) {
        std::memset(&field, 0xEE, sizeof field);
        field.Put(text);
        EXPECT_TRUE(SameBytes(Hex(bytes), {reinterpret_cast<const char*>(&field), sizeof field}));
    };
    expectBytes("abc", "03 'abc' 00 EE*15 00");
    expectBytes({"a\0b", 3}, "01 'a' 00 EE*17 00");
    expectBytes("abcdefghijklmnopqrstuvw", "13 'abcdefghijklmnopqrs' 00");
    field.count = 200;
    EXPECT_EQ(field.Text(), "abcdefghijklmnopqrs");
}

TEST(DefinitionRecord, AMemberCanReplaceItsOwnerAndIsNormalized) {
    DefinitionRecord record;
    record.Members.Append().block.AreaName = {1, {'x', 'x'}};
    record.Members.Elements().front().Members.Append().AreaCode.text = "B";
    record = record.Members.Elements().front();
    EXPECT_EQ(record.block.AreaName.characters[1], '\0');
    record.block.AreaName.characters[1] = 'x';
    EXPECT_TRUE(SameBytes(Hex("06 00 00*9 01 'x' 00*98 01 06 01 'B' 00*109 01 00 00"), Written(record)));
}

TEST(DefinitionList, MembersStandBetweenTheirOwnMarkersAndKeepTheirVersion) {
    const std::string leaf = "06 00 00*109 00 06 00 01 00", tree = leaf + leaf + "00" + leaf + "00";
    DefinitionList list;
    list.SetVersion(3);
    list.Append().Members.Elements().emplace_back();
    EXPECT_TRUE(SameBytes(Hex("01 06 00 00*109 00 06 00 01  06 00 00*109 01 00  00 00"), Written(list)));
    ExpectPasses(list, "07 06 00 00*109 00 06 00 AA" + tree, "01 06 00 00*109 00 06 00 01" + tree);
}

TEST(SketchFile, HasWhatItsVersionHasAndCopiesAllButFileFlags) {
    const char* const lists = "01 00";
    const char* const afterHeader[] = {lists, lists, lists, lists, "02 01 00", "02 03 04 00 00 01 00"};
    SketchFile file;
    file.DefinitionType = 2;
    file.FileFlags = 0x403;
    for (int v = 0; v <= SketchFile::kNewestVersion + 1; ++v) {
        file.SetVersion(v);
        const std::size_t known = std::min<std::size_t>(v, std::size(afterHeader) - 1);
        std::string bytes = Hex("07 'TRN4WIN' 00*3 40 10 01 00*93");
        if (v <= SketchFile::kNewestVersion) bytes += Hex(afterHeader[known]);
        bytes[17] = static_cast<char>(v);
        EXPECT_TRUE(SameBytes(bytes, Written(file))) << v;
        SketchFile back;
        back.definitions.Append();
        EXPECT_EQ(ReadFrom(back, bytes + "rest"), 4u) << v;
        EXPECT_EQ(back.definitions.GetVersion(), v);
        back.FileFlags = 7;
        back.DefinitionType = 7;
        back = SketchFile(file);
        EXPECT_EQ(back.FileFlags, 7u) << v;
        back.FileFlags = 0x403;
        SketchFile swapped;
        swapped.Swap(back);
        EXPECT_TRUE(SameBytes(bytes, Written(swapped))) << v;
    }
    file.SetVersion(-1);
    EXPECT_EQ(Written(file).size(), 107u) << "a header alone";
}

}  // namespace
}  // namespace zel
