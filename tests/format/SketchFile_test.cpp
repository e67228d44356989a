#include "SketchFile.h"

#include "DefinitionRecord.h"
#include "HexDump.h"
#include "SampleFile.h"

namespace zel {
namespace {

// A fresh header at version v.
std::string FreshHeader(int v) {
    std::string bytes = Hex("07 'TRN4WIN' 00*3 40 10 01 00 00 00 00 00*89");
    bytes[17] = static_cast<char>(v);
    return bytes;
}

TEST(SketchFile, EmptyFileHasWhatItsVersionHas) {
    const std::string afterHeader[] = {"01 00", "01 00", "01 00", "01 00", "00 01 00", "00*5 01 00", ""};
    for (int v = 0; v <= 6; ++v) {
        SketchFile file;
        file.SetVersion(v);
        EXPECT_TRUE(SameBytes(FreshHeader(v) + Hex(afterHeader[v]), Written(file))) << "version " << v;
    }
}

TEST(SketchFile, ReadsWhatItsVersionHas) {
    const struct {
        std::string afterHeader;
        int definitionType, fileFlags;
        std::size_t left;
    } cases[] = {{"01 00 'x'", 9, 7, 1},           {"01 00 'x'", 9, 7, 1},
                 {"01 00 'x'", 9, 7, 1},           {"01 00 'x'", 9, 7, 1},
                 {"02 01 00 'x'", 2, 7, 1},        {"02 03 04 00 00 01 00 'x'", 2, 0x403, 1},
                 {"02 03 04 00 00 01 00", 9, 7, 7}};
    for (int v = 0; v <= 6; ++v) {
        SketchFile file;
        file.DefinitionType = 9;
        file.FileFlags = 7;
        EXPECT_EQ(ReadFrom(file, FreshHeader(v) + Hex(cases[v].afterHeader)), cases[v].left) << v;
        EXPECT_EQ(file.GetVersion(), v);
        EXPECT_EQ(file.definitions.GetVersion(), v);
        EXPECT_EQ(file.DefinitionType, cases[v].definitionType) << v;
        EXPECT_EQ(file.FileFlags, cases[v].fileFlags) << v;
    }
}

TEST(SketchFile, CopyLeavesFileFlags) {
    const SketchFile file = SampleFile(4);
    SketchFile copy;
    copy.FileFlags = 7;
    copy.definitions.Append();
    copy = file;
    EXPECT_EQ(copy.FileFlags, 7);
    EXPECT_EQ(copy.GetVersion(), 4);
    EXPECT_EQ(SketchFile(file).FileFlags, 0);
    SketchFile original = SampleFile(4);
    EXPECT_TRUE(SameBytes(Written(original), Written(copy)));
}

TEST(SketchFile, NegativeVersionWritesTheHeaderAlone) {
    SketchFile file = SampleFile(5);
    file.SetVersion(-1);
    EXPECT_EQ(Written(file).size(), 107u);
}

}  // namespace
}  // namespace zel
