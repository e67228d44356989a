#include "SketchFile.h"

#include "DefinitionRecord.h"
#include "HexDump.h"

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

}  // namespace
}  // namespace zel
