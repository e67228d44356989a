#include "ListCommand.h"

#include <algorithm>

#include "Input.h"
#include "zel/print/ListPrinter.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

using Form = ListPrinter::Form;

// A file that is cut short is listed as far as it goes, but not silently.
void ListFile(const Console& console, const std::string& path, ListPrinter& printer) {
    const std::string bytes = ReadInput(console, path);
    printer.SetFile(Shown(path));
    Surveyor::Survey(bytes, printer);
    printer.Flush();
    TellOfSalvage(console, path, bytes);
    if (printer.Missing())
        throw Failure(kDamaged,
                      path + ": cut short, it lacks at least " + Counted(printer.Missing(), "byte"));
}

}  // namespace

ExitStatus ListCommand::Run(const Console& console) const {
    console.ShowProgressBesideOutput();
    const Form form = csv ? Form::kCommas : tsv ? Form::kTabs : Form::kPage;
    const std::vector<Inputs::File> all = files.Files(console);
    std::size_t width = 0;
    if (all.size() > 1)
        for (const Inputs::File& file : all) width = std::max(width, Shown(file.path).size());
    ListPrinter printer(console.out, form, width, console.hasColour ? Palette::Coloured() : Palette());
    const ExitStatus status = Inputs::ForEach(console, all, [&](const Inputs::File& file) {
        ListFile(console, file.path, printer);
        return kSound;
    });
    printer.Flush();
    return status;
}

}  // namespace zel
