#include "ConvertCommand.h"

#include <algorithm>

#include "ForFile.h"
#include "zel/edit/Converter.h"
#include "zel/files/Files.h"
#include "zel/survey/Checker.h"
#include "zel/survey/FieldText.h"
#include "zel/survey/Salvager.h"
#include "zel/text/Text.h"

namespace zel {
namespace {

// What is wrong with a damaged file, in a line; empty for any other.
std::string DamageOf(const std::string& file) {
    const Findings findings = Checker::Check(file);
    const auto isDamage = [](const Finding& finding) { return finding.gravity == Finding::kDamage; };
    const auto first = std::find_if(findings.begin(), findings.end(), isDamage);
    if (first == findings.end()) return "";
    const auto further = std::count_if(first + 1, findings.end(), isDamage);
    return "damaged at " + HexNumber(first->offset, 4) + ": " + first->what +
           (further ? ", and " + Counted(static_cast<std::size_t>(further), "further finding") : "");
}

void PrintSalvage(const Salvage& salvage, std::ostream& out) {
    for (const Salvage::Find& find : salvage.finds)
        Console::Print(out, "taken up: " + PlaceText(find.place) + " from " + HexNumber(find.offset, 4));
    for (const Salvage::Gap& gap : salvage.gaps)
        Console::Print(out,
                       "left behind: " + Counted(gap.size, "byte") + " from " + HexNumber(gap.offset, 4));
    if (salvage.missing) Console::Print(out, "missing: " + Counted(salvage.missing, "byte") + " at the end");
}

}  // namespace

ExitStatus ConvertCommand::Run(const Console& console) const {
    ExpectWritable(out, Overwrite::kRefuse);
    std::string bytes = ReadFile(file);
    const std::string damage = DamageOf(bytes);
    if (!damage.empty() && !salvage)
        throw Failure(kDamaged, file + ": " + damage + "; --salvage takes what can be read");
    Salvage salvaged;
    if (!damage.empty()) {
        salvaged = ForFile(file, [&] { return Salvager::Take(bytes); });
        bytes = salvaged.file;
    }
    const Conversion conversion = Converter::Convert(bytes, version);
    if (!damage.empty()) console.Complain(file + ": " + damage);
    if (conversion.dropsBytes)
        console.Complain(file + ": bytes that readers do not see are not carried over");
    PrintSalvage(salvaged, console.out);
    for (const std::string& change : conversion.changed) Console::Print(console.out, "changed: " + change);
    for (const std::string& loss : conversion.lost) Console::Print(console.out, "lost: " + loss);
    std::string sum = Shown(out) + ": version " + std::to_string(version) + ", " +
                      Counted(conversion.lost.size(), "value") + " lost";
    if (!damage.empty()) sum += ", " + Counted(salvaged.Lost(), "byte") + " left behind";
    Console::Print(console.out, sum);
    // Nothing is written whose losses nobody heard of.
    console.ExpectPrinted();
    WriteFile(out, conversion.file, Overwrite::kRefuse);
    return damage.empty() ? kSound : kDamaged;
}

}  // namespace zel
