#include "ShowCommand.h"

#include "zel/files/Files.h"
#include "zel/print/HexPrinter.h"
#include "zel/json/JsonWriter.h"
#include "zel/print/PagePrinter.h"
#include "zel/text/Palette.h"
#include "zel/survey/Surveyor.h"

namespace zel {

ExitStatus ShowCommand::Run(const Console& console) const {
    const std::string bytes = ReadFile(file);
    const Palette palette = console.hasColour ? Palette::Coloured() : Palette();
    if (json) {
        JsonWriter writer(console.out);
        Surveyor::Survey(bytes, writer);
        writer.Finish();
    } else if (hex) {
        HexPrinter printer(console.out, palette);
        Surveyor::Survey(bytes, printer);
    } else {
        PagePrinter printer(console.out, palette);
        Surveyor::Survey(bytes, printer);
        printer.Finish();
    }
    return kSound;
}

}  // namespace zel
