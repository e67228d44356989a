// Any JSON as a file: it is refused in one line that says where, or makes a file whose own JSON makes the
// same file.

#include <sstream>

#include "zel/json/Assembler.h"
#include "zel/json/JsonWriter.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Failure.h"
#include "Target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string file;
    try {
        file = zel::Assembler::Assemble(zel::Input(data, size));
    } catch (const zel::Failure& failure) {
        zel::Check(std::string_view(failure.what()).substr(0, 5) == "line ", "a refusal says where");
        return 0;
    }
    std::ostringstream json;
    zel::JsonWriter writer(json);
    zel::Surveyor::Survey(file, writer);
    writer.Finish();
    zel::Check(zel::Assembler::Assemble(json.str()) == file, "the JSON of a file makes the same bytes");
    return 0;
}
