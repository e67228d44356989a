#include "ConvertCommand.h"

#include "ForFile.h"
#include "Input.h"
#include "zel/edit/Converter.h"
#include "zel/survey/Checker.h"
#include "zel/survey/Salvager.h"
#include "zel/text/Text.h"

namespace zel {
ExitStatus ConvertCommand::Run(const Console& console) const {
    Inputs inputs = files;
    std::string target = out;
    if (target.empty()) {
        if (inputs.paths.size() < 2)
            throw Failure(kUnusable, "OUT is required; see zelsketch convert --help");
        target = inputs.paths.back();
        inputs.paths.pop_back();
    }
    const bool isFolder = IsFolder(target);
    if (!isFolder && (inputs.paths.size() > 1 || IsFolder(inputs.paths[0])))
        throw Failure(kUnusable, target + " is no folder, where more than one file could go");
    return Inputs::ForEach(console, inputs.Files(console), [&](const Inputs::File& file) {
        if (!isFolder) return Convert(console, file.path, target);
        const std::string path = PathIn(target, file.below);
        MakeFolderOf(path);
        return Convert(console, file.path, path);
    });
}

ExitStatus ConvertCommand::Convert(const Console& console, const std::string& file,
                                   const std::string& target) const {
    const Output output(console, target, Overwrite::kRefuse);
    std::string bytes = ReadInput(console, file);
    const std::string damage = DamageOf(Checker::Check(bytes));
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
    for (const std::string& line : salvaged.Lines()) output.Report(line);
    for (const std::string& change : conversion.changed) output.Report("changed: " + change);
    const std::size_t lost = Converter::ListLosses(
        bytes, version, [&](const std::string& loss) { output.Report("lost: " + loss); });
    output.Report(Shown(target) + ": version " + std::to_string(version) + ", " + Counted(lost, "value") +
                  " lost" + (damage.empty() ? "" : ", " + Counted(salvaged.Lost(), "byte") + " left behind"));
    output.Write(conversion.file);
    return damage.empty() ? kSound : kDamaged;
}

}  // namespace zel
