#include "ShowCommand.h"

#include "Input.h"
#include "zel/print/HexPrinter.h"
#include "zel/json/JsonWriter.h"
#include "zel/print/PagePrinter.h"
#include "zel/print/SvgPrinter.h"
#include "zel/text/Palette.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Text.h"

namespace zel {

ExitStatus ShowCommand::Run(const Console& console) const {
    const std::string bytes = ReadInput(console, file);
    const Palette palette = console.hasColour ? Palette::Coloured() : Palette();
    if (json) {
        JsonWriter writer(console.out, drawing ? nullptr : JsonWriter::kFileSchema);
        Survey(bytes, writer);
        writer.Finish();
    } else if (svg) {
        SvgPrinter printer(console.out);
        Survey(bytes, printer);
        printer.Finish();
    } else if (hex) {
        HexPrinter printer(console.out, palette);
        Survey(bytes, printer);
    } else {
        PagePrinter printer(console.out, palette);
        Survey(bytes, printer);
        printer.Finish();
    }
    return kSound;
}

void ShowCommand::Survey(std::string_view bytes, FieldVisitor& visitor) const {
    if (!drawing) return Surveyor::Survey(bytes, visitor);
    if (at > bytes.size())
        throw Failure(kUnusable, file + " has no byte " + std::to_string(at) + ": it ends after " +
                                     Counted(bytes.size(), "byte"));
    Surveyor::SurveyDrawing(bytes.substr(at), *drawing, visitor, at);
}

}  // namespace zel
