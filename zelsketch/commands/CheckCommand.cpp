#include "CheckCommand.h"

#include <algorithm>

#include "zel/survey/Checker.h"
#include "zel/files/Files.h"
#include "Progress.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

ExitStatus CheckFile(const std::string& path, std::ostream& out) {
    const std::vector<Finding> findings = Checker::Check(ReadFile(path));
    for (const Finding& finding : findings)
        out << path << ": " << HexNumber(finding.offset, 4) << ": " << finding.what << '\n';
    if (!findings.empty()) return kDamaged;
    out << path << ": sound\n";
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
            status = CheckFile(files[i], console.out);
        } catch (const Failure& failure) {
            progress.Wipe();
            console.error << "zelsketch: " << failure.what() << '\n';
            status = failure.status();
        }
        worst = std::max(worst, status);
    }
    return worst;
}

}  // namespace zel
