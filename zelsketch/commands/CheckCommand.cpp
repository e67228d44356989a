#include "CheckCommand.h"

#include <algorithm>

#include "Input.h"
#include "Progress.h"
#include "zel/survey/Checker.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

ExitStatus CheckFile(const std::string& path, const Console& console, Progress& progress) {
    const Findings findings = Checker::Check(ReadInput(console, path));
    progress.Wipe();
    for (const Finding& finding : findings)
        Console::Print(console.out, Shown(path) + ": " + HexNumber(finding.offset, 4) + ": " +
                                        (finding.gravity == Finding::kNote ? "note: " : "") + finding.what);
    if (IsDamaged(findings)) return kDamaged;
    Console::Print(console.out, Shown(path) + ": sound");
    return kSound;
}

}  // namespace

ExitStatus CheckCommand::Run(const Console& console) const {
    Progress progress(console.error, console.errorIsTerminal, files.size());
    ExitStatus worst = kSound;
    for (std::size_t i = 0; i < files.size(); ++i) {
        progress.Show(i);
        ExitStatus status;
        try {
            status = CheckFile(files[i], console, progress);
        } catch (const Failure& failure) {
            progress.Wipe();
            console.Complain(failure.what());
            status = failure.status();
        }
        worst = std::max(worst, status);
    }
    return worst;
}

}  // namespace zel
