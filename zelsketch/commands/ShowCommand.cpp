#include "ShowCommand.h"

#include "ForFile.h"
#include "Input.h"
#include "zel/print/HexPrinter.h"
#include "zel/json/JsonWriter.h"
#include "zel/print/PagePrinter.h"
#include "zel/print/SvgPrinter.h"
#include "zel/text/Palette.h"
#include "zel/survey/Checker.h"
#include "zel/survey/Salvager.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Text.h"

namespace zel {

ExitStatus ShowCommand::Run(const Console& console) const {
    console.ShowProgressBesideOutput();
    bool isFirst = true;
    const bool isPage = !json && !svg;
    return Inputs::ForEach(console, files.Files(console), [&](const Inputs::File& file) {
        if (isPage && (files.paths.size() > 1 || files.recursive))
            console.out << (isFirst ? "" : "\n") << "==> " << Shown(file.path) << " <==\n";
        isFirst = false;
        return Show(console, file.path);
    });
}

ExitStatus ShowCommand::Show(const Console& console, const std::string& file) const {
    std::string bytes = ReadInput(console, file);
    if (at > bytes.size())
        throw Failure(kUnusable, file + " has no byte " + std::to_string(at) + ": it ends after " +
                                     Counted(bytes.size(), "byte"));
    Salvage salvaged;
    const bool isSalvaged = salvage && IsDamaged(Checker::Check(bytes));
    if (isSalvaged) {
        salvaged = ForFile(file, [&] { return Salvager::Take(bytes); });
        bytes = salvaged.file;
        for (const std::string& line : salvaged.Lines())
            console.Complain(std::string(file).append(": ").append(line));
    } else if (!drawing) {
        TellOfSalvage(console, file, bytes);
    }
    const Palette palette = console.hasColour ? Palette::Coloured() : Palette();
    if (json) {
        JsonWriter writer(console.out, drawing ? JsonWriter::kDrawingSchema : JsonWriter::kFileSchema);
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
        PagePrinter printer(console.out, palette, salvaged.finds);
        Survey(bytes, printer);
        printer.Finish();
    }
    return isSalvaged ? kDamaged : kSound;
}

void ShowCommand::Survey(std::string_view bytes, FieldVisitor& visitor) const {
    if (!drawing) return Surveyor::Survey(bytes, visitor);
    Surveyor::SurveyDrawing(bytes.substr(at), *drawing, visitor, at);
}

}  // namespace zel
