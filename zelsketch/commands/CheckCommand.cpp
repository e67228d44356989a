#include "CheckCommand.h"

#include "Input.h"
#include "zel/survey/Checker.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

ExitStatus CheckFile(const std::string& path, const Console& console) {
    const std::string bytes = ReadInput(console, path);
    const Findings findings = Checker::Check(bytes);
    for (const Finding& finding : findings)
        console.Print(console.out, Shown(path) + ": " + HexNumber(finding.offset, 4) + ": " +
                                       (finding.gravity == Finding::kNote ? "note: " : "") + finding.what);
    if (IsDamaged(findings)) {
        TellOfSalvage(console, path, bytes);
        return kDamaged;
    }
    console.Print(console.out, Shown(path) + ": sound");
    return kSound;
}

}  // namespace

ExitStatus CheckCommand::Run(const Console& console) const {
    return Inputs::ForEach(console, files.Files(console),
                           [&](const Inputs::File& file) { return CheckFile(file.path, console); });
}

}  // namespace zel
