// A definition file of any bytes: what is read is what the bytes say, what is written is what memory says, a
// copy is the same file.

#include "DefinitionLayout.h"
#include "Target.h"

using zel::Check;
using zel::SketchFile;

namespace {

// `same` has the fields and versions of `file`.
void CheckWritten(SketchFile& file, const SketchFile& same) {
    zel::Encoding encoding(same.GetVersion(), same.GetVersion());
    PassFile(encoding, same);
    Check(Image(file) == encoding.Bytes(), "what is written is what memory holds");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = zel::Input(data, size);
    zel::Bytes stream(bytes);
    SketchFile file;
    file.Read(stream);
    const bool complete = stream.good();
    zel::Comparison comparison(bytes, file.GetVersion());
    PassFile(comparison, file);
    Check(complete != comparison.Done(), "only the end of the bytes stops a read");
    Check(!complete || comparison.Left() == stream.Left(), "a read ends where the file does");

    SketchFile copy;
    copy = file;
    Check(copy.FileFlags == 0, "a copy keeps its own flags");
    copy.FileFlags = file.FileFlags;
    CheckWritten(file, copy);
    copy.SetVersion(static_cast<int>(size % (SketchFile::kNewestVersion + 2)));
    CheckWritten(copy, copy);
    return 0;
}
