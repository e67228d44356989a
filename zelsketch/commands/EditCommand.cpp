#include "EditCommand.h"

#include "ForFile.h"
#include "Input.h"
#include "zel/text/Text.h"

namespace zel {

ExitStatus EditCommand::Set(const Console& console) const {
    return Run(console, [this](const std::string& bytes) { return Editor::Set(bytes, arguments, all); });
}

ExitStatus EditCommand::Add(const Console& console) const {
    return Run(console, [this](const std::string& bytes) { return Editor::Add(bytes, place, arguments); });
}

ExitStatus EditCommand::Remove(const Console& console) const {
    return Run(console, [this](const std::string& bytes) { return Editor::Remove(bytes, arguments, all); });
}

ExitStatus EditCommand::Move(const Console& console) const {
    return Run(console,
               [this](const std::string& bytes) { return Editor::Move(bytes, place, arguments[0]); });
}

template <class Job>
ExitStatus EditCommand::Run(const Console& console, Job job) const {
    const bool isInPlace = out.empty() && file != "-";
    const std::string target = isInPlace ? BehindLinks(file) : out.empty() ? "-" : out;
    const Overwrite overwrite = force       ? Overwrite::kForce
                                : isInPlace ? Overwrite::kReplace
                                            : Overwrite::kRefuse;
    const Output output(console, target, overwrite);
    const std::string bytes = ReadInput(console, file);
    const Editor::Edit edit = ForFile(file, [&] { return job(bytes); });
    for (const std::string& change : edit.changes) output.Report(change);
    if (edit.changes.empty()) output.Report(Shown(file) + ": nothing to change");
    if (!isInPlace) {
        output.Write(edit.file);
    } else if (!edit.changes.empty()) {
        console.ExpectPrinted();
        ReplaceFile(target, bytes, edit.file, overwrite, !dropsBackup);
    }
    return kSound;
}

}  // namespace zel
