// A drawing of any bytes, behind a byte that tells its version: what is read is what the bytes say, what is
// written is what memory says, at that version and at another, and a copy is the same drawing. Reading stops
// where the bytes end; how it goes on is for drawing_cut_fuzz.

#include "DrawingLayout.h"
#include "Target.h"

using zel::Check;
using zel::DrawingRecord;

namespace {

constexpr int kVersions = 27;

bool ReadAll(DrawingRecord& drawing, std::istream& stream) {
    stream.exceptions(std::ios_base::failbit);
    try {
        drawing.Read(stream);
        return true;
    } catch (const std::ios_base::failure&) {
        return false;
    }
}

void CheckWritten(DrawingRecord& drawing, int version, int readVersion) {
    drawing.SetVersion(version);
    zel::Encoding encoding(version, readVersion);
    PassDrawing(encoding, drawing);
    Check(Image(drawing) == encoding.Bytes(), "what is written is what memory holds");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const int version = data[0] % kVersions, step = data[0] / kVersions;
    const std::string_view bytes = zel::Input(data + 1, size - 1);
    zel::Bytes stream(bytes);
    DrawingRecord drawing;
    drawing.SetVersion(version);
    const bool complete = ReadAll(drawing, stream);
    zel::Comparison comparison(bytes, version, complete);
    PassDrawing(comparison, drawing);
    Check(complete != comparison.Done(), "only the end of the bytes stops a read");
    if (!complete) return 0;
    Check(comparison.Left() == stream.Left(), "a read ends where the drawing does");

    DrawingRecord copy;
    copy = drawing;
    zel::Comparison again(bytes, version);
    PassDrawing(again, copy);
    CheckWritten(copy, version, version);
    CheckWritten(copy, (version + 1 + 3 * step) % kVersions, version);
    return 0;
}
