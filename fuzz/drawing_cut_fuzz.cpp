// A drawing that ends early, read on to the counts that it announces: what stands in front of the end is read
// as the bytes say, the rest takes bounded time and memory. Slow, hence apart from drawing_fuzz.

#include "DrawingLayout.h"
#include "Target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const int version = data[0] % 27;
    const std::string_view bytes = zel::Input(data + 1, size - 1);
    zel::Bytes stream(bytes);
    zel::DrawingRecord drawing;
    drawing.SetVersion(version);
    drawing.Read(stream);
    zel::Comparison comparison(bytes, version);
    PassDrawing(comparison, drawing);
    zel::Check(stream.good() != comparison.Done(), "only the end of the bytes stops a read");
    zel::DrawingRecord copy(drawing);
    zel::Check(std::string(Image(copy)) == Image(drawing), "a copy writes the same");
    return 0;
}
