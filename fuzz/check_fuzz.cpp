// A definition file of any bytes and the checker: a finding says where, and where there is none the same
// bytes are written that were read.

#include "zel/definition/SketchFile.h"
#include "zel/survey/Checker.h"
#include "Target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = zel::Input(data, size);
    const std::vector<zel::Finding> findings = zel::Checker::Check(bytes);
    for (const zel::Finding& finding : findings) zel::Check(finding.offset <= size, "a finding says where");
    if (!findings.empty()) return 0;

    zel::Bytes stream(bytes);
    zel::SketchFile file;
    file.Read(stream);
    // A sound file may lack the flags of sections that its type and version imply.
    std::string expected(bytes);
    expected.replace(offsetof(zel::HeaderImage, Flags), sizeof file.header.image.Flags,
                     reinterpret_cast<const char*>(&file.header.image.Flags), sizeof file.header.image.Flags);
    zel::Check(Image(file) == expected, "a sound file is written as it was read");
    return 0;
}
