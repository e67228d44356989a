// Any bytes as a file that is shown: its JSON makes the same bytes, the page and the dump show something.

#include <sstream>

#include "zel/json/Assembler.h"
#include "zel/json/JsonWriter.h"
#include "zel/print/HexPrinter.h"
#include "zel/print/PagePrinter.h"
#include "zel/survey/Surveyor.h"
#include "Target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view file = zel::Input(data, size);
    std::ostringstream json, page, dump;
    zel::JsonWriter writer(json);
    zel::Surveyor::Survey(file, writer);
    writer.Finish();
    zel::Check(zel::Assembler::Assemble(json.str()) == file, "the JSON of a file makes the same bytes");

    zel::PagePrinter printer(page, zel::Palette());
    zel::Surveyor::Survey(file, printer);
    printer.Finish();
    zel::HexPrinter hex(dump, zel::Palette());
    zel::Surveyor::Survey(file, hex);
    return 0;
}
