// Any text as the JSON of a file: it is refused in one line, or makes a file that goes to JSON and back
// without a difference. Any bytes are a file as well, which does so too.

#include <sstream>
#include <string_view>

#include "zel/json/Assembler.h"
#include "zel/survey/Checker.h"
#include "zel/text/Failure.h"
#include "zel/print/HexPrinter.h"
#include "zel/json/JsonWriter.h"
#include "zel/print/PagePrinter.h"
#include "RoundTrip.h"
#include "zel/survey/Surveyor.h"

using zel::Assembler;
using zel::Check;

namespace {

template <class Visitor, class... More>
std::string Shown(std::string_view file, const More&... more) {
    std::ostringstream out;
    Visitor visitor(out, more...);
    zel::Surveyor::Survey(file, visitor);
    if constexpr (!std::is_same_v<Visitor, zel::HexPrinter>) visitor.Finish();
    return out.str();
}

void GoThereAndBack(std::string_view file) {
    Check(Assembler::Assemble(Shown<zel::JsonWriter>(file)) == file,
          "the JSON of a file makes the same bytes");
    Shown<zel::PagePrinter>(file, zel::Palette());
    Shown<zel::HexPrinter>(file, zel::Palette());
    zel::Checker::Check(file);
}

}  // namespace

// The seeds: what the keywords and the ways to write a field are.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const char* folder = zel::SeedFolder();
    if (!folder) return 0;
    const std::string json =
        R"({"Header":{"Flags":257,"Type":5,"CreatedBy":"\u20ac","CreatedByBehind":"ff00"},"FileFlags":4294967295,)"
        R"("Definitions":[{"AreaCode":"A\u0000","AreaCodeTag":7,"WallWidth":null,"WallWidthBits":"0x7ff0000000000001",)"
        R"("Multiplier":0.1,"AreaName":"x","AreaNameCount":25,"AreaNameBehind":"01","Members":[{"MembersOpening":2}]}],)"
        R"("LeftOver":"00","CutShort":1})";
    const std::string file = Assembler::Assemble(json);
    zel::WriteSeed(folder, "terse", json);
    zel::WriteSeed(folder, "file", file);
    zel::WriteSeed(folder, "full", Shown<zel::JsonWriter>(file));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    GoThereAndBack(input);
    try {
        GoThereAndBack(Assembler::Assemble(input));
    } catch (const zel::Failure& failure) {
        Check(std::string_view(failure.what()).substr(0, 5) == "line ", "a refusal says where");
    }
    return 0;
}
