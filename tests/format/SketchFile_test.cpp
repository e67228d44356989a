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

TEST(SketchFile, HasWhatItsVersionHas) {
    const std::string afterHeader[] = {"01 00", "01 00", "01 00", "01 00", "02 01 00", "02 03 04 00 00 01 00",
                                       ""};
    for (int v = 0; v <= 6; ++v) {
        SketchFile file;
        file.SetVersion(v);
        file.DefinitionType = 2;
        file.FileFlags = 0x403;
        const std::string bytes = FreshHeader(v) + Hex(afterHeader[v]);
        EXPECT_TRUE(SameBytes(bytes, Written(file))) << "version " << v;
        SketchFile back;
        back.DefinitionType = 9;
        back.FileFlags = 7;
        EXPECT_EQ(ReadFrom(back, bytes + "rest"), 4u) << v;
        EXPECT_EQ(back.GetVersion(), v);
        EXPECT_EQ(back.definitions.GetVersion(), v);
        EXPECT_EQ(back.DefinitionType, v == 4 || v == 5 ? 2 : 9) << v;
        EXPECT_EQ(back.FileFlags, v == 5 ? 0x403 : 7) << v;
    }
    SketchFile file = SampleFile(5);
    file.SetVersion(-1);
    EXPECT_EQ(Written(file).size(), 107u) << "a header alone";
    FileHeader fresh;
    EXPECT_TRUE(SameBytes(FreshHeader(0), Written(fresh)));
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

}  // namespace
}  // namespace zel
