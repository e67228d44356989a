// A definition file of any bytes: what is read is what the bytes say, what is written is what memory says, a
// copy is the same file.

#include "DefinitionLayout.h"
#include "Target.h"

using zel::Check;
using zel::SketchFile;

namespace {

std::size_t Compare(std::string_view bytes, const SketchFile& file, bool complete) {
    zel::Comparison comparison(bytes, file.GetVersion());
    PassFile(comparison, file);
    Check(complete != comparison.Done(), "only the end of the bytes stops a read");
    return comparison.Left();
}

void CheckWritten(SketchFile& file, int version) {
    file.SetVersion(version);
    zel::Encoding encoding(version, version);
    PassFile(encoding, file);
    Check(Image(file) == encoding.Bytes(), "what is written is what memory holds");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = zel::Input(data, size);
    zel::Bytes stream(bytes);
    SketchFile file;
    file.Read(stream);
    const bool complete = stream.good();
    const std::size_t left = Compare(bytes, file, complete);
    Check(!complete || left == stream.Left(), "a read ends where the file does");

    SketchFile copy;
    copy = file;
    Check(copy.FileFlags == 0, "a copy keeps its own flags");
    copy.FileFlags = file.FileFlags;
    Compare(bytes, copy, complete);
    CheckWritten(copy, file.GetVersion());
    CheckWritten(copy, static_cast<int>(size % 7));
    return 0;
}
