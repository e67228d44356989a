// A definition file of any bytes: what was read once is written and read again without a difference.

#include "zel/definition/DefinitionRecord.h"
#include "RoundTrip.h"
#include "zel/definition/SketchFile.h"

using zel::Check;
using zel::SketchFile;

// The seeds: a file of each version with a nested definition.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const char* folder = zel::SeedFolder();
    for (int version = 0; folder && version <= SketchFile::kNewestVersion + 1; ++version) {
        SketchFile file;
        zel::DefinitionRecord& record = file.definitions.Append();
        record.AreaCode.text = "GLA1";
        record.block.AreaName.Put("First Floor");
        record.Members.Append().SubtractAreaCode.text = "GAR";
        file.definitions.Append();
        file.SetVersion(version);
        zel::WriteSeed(folder, std::to_string(version), zel::Image(file));
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SketchFile first;
    const zel::Load load = zel::ReadImage(first, {reinterpret_cast<const char*>(data), size});
    const std::string second = zel::Image(first);
    Check(load.complete || load.consumed == size, "only the end of the bytes stops a read");
    // Shorter by what stood behind a NUL in a short string.
    Check(!load.complete || second.size() <= load.consumed, "nothing is added to a complete file");

    SketchFile reread;
    const zel::Load again = zel::ReadImage(reread, second);
    Check(again.complete && again.consumed == second.size(), "what was written reads back whole");
    Check(reread.GetVersion() == first.GetVersion(), "the version comes back");
    Check(zel::Image(reread) == second, "the third image is the second");

    SketchFile copy(first);
    copy.FileFlags = first.FileFlags;
    Check(zel::Image(copy) == second, "a copy with the same flags writes the same");
    return 0;
}
