#include "DiffCommand.h"

#include <nlohmann/json.hpp>

#include "Input.h"
#include "zel/diff/Comparer.h"
#include "zel/text/Text.h"
#include "zel/text/Windows1252.h"

namespace zel {
namespace {

nlohmann::ordered_json Json(const Difference& difference) {
    nlohmann::ordered_json json = {{"kind", difference.KindText()}, {"path", difference.path}};
    if (difference.kind != Difference::kChanged) json["code"] = Utf8OfWindows1252(difference.code);
    if (difference.kind == Difference::kMoved) json["from"] = difference.before;
    if (difference.kind == Difference::kChanged) {
        json["before"] = difference.before;
        json["after"] = difference.after;
    }
    return json;
}

// What git gives in place of a file that is not there.
bool IsNothing(const std::string& path) { return path == "/dev/null" || path == "nul"; }

}  // namespace

ExitStatus DiffCommand::Run(const Console& console) const {
    if (git) return RunForGit(console);
    if (files.size() != 2) throw Failure(kUnusable, "expected two files; see zelsketch diff --help");
    return Compare(console, ReadInput(console, files[0]), ReadInput(console, files[1]));
}

// path old-file old-hex old-mode new-file new-hex new-mode, and two more for a renamed file; only the path of
// an unmerged one.
ExitStatus DiffCommand::RunForGit(const Console& console) const {
    constexpr std::size_t kOld = 1, kNew = 4, kLeast = 7, kRenamed = 7;
    if (files.size() > 1 && files.size() < kLeast) throw Failure(kUnusable, "expected git's own arguments");
    const std::string renamed = files.size() > kRenamed ? " -> " + Shown(files[kRenamed]) : "";
    console.out << "==> " << Shown(files[0]) << renamed << " <==\n";
    if (files.size() == 1)
        console.out << "unmerged\n";
    else if (IsNothing(files[kOld]) || IsNothing(files[kNew]))
        console.out << (IsNothing(files[kOld]) ? "new file\n" : "deleted file\n");
    else
        Compare(console, ReadFile(files[kOld]), ReadFile(files[kNew]));
    return kSound;
}

ExitStatus DiffCommand::Compare(const Console& console, const std::string& oldFile,
                                const std::string& newFile) const {
    const std::vector<Difference> differences = Comparer::Compare(oldFile, newFile);
    if (json) {
        nlohmann::ordered_json all = nlohmann::ordered_json::array();
        for (const Difference& difference : differences) all.push_back(Json(difference));
        console.out << all.dump(2) << '\n';
    } else {
        for (const Difference& difference : differences) console.out << LineText(difference) << '\n';
    }
    return differences.empty() ? kSound : kDamaged;
}

}  // namespace zel
