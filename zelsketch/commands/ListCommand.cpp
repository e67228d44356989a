#include "ListCommand.h"

#include <algorithm>

#include "zel/files/Files.h"
#include "zel/print/ListPrinter.h"
#include "zel/survey/Surveyor.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

using Form = ListPrinter::Form;

// A file that is cut short is listed as far as it goes, but not silently.
void ListFile(const std::string& path, ListPrinter& printer) {
    const std::string bytes = ReadFile(path);
    printer.SetFile(Shown(path));
    Surveyor::Survey(bytes, printer);
    printer.Flush();
    if (printer.Missing())
        throw Failure(kDamaged,
                      path + ": cut short, it lacks at least " + Counted(printer.Missing(), "byte"));
}

}  // namespace

ExitStatus ListCommand::Run(const Console& console) const {
    const Form form = csv ? Form::kCommas : tsv ? Form::kTabs : Form::kPage;
    std::size_t width = 0;
    if (files.size() > 1)
        for (const std::string& file : files) width = std::max(width, Shown(file).size());
    ListPrinter printer(console.out, form, width, console.hasColour ? Palette::Coloured() : Palette());
    ExitStatus worst = kSound;
    for (const std::string& file : files) {
        try {
            ListFile(file, printer);
        } catch (const Failure& failure) {
            console.Complain(failure.what());
            worst = std::max(worst, failure.status());
        }
    }
    printer.Flush();
    return worst;
}

}  // namespace zel
