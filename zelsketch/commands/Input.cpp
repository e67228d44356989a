#include "Input.h"

#include "zel/survey/Checker.h"
#include "zel/survey/Salvager.h"
#include "zel/text/Failure.h"

namespace zel {
namespace {

constexpr char kStandard[] = "-";

}  // namespace

std::string ReadInput(const Console& console, const std::string& path, std::uint64_t largest) {
    return path == kStandard ? ReadStream(console.in, "the standard input", largest)
                             : ReadFile(path, largest);
}

void TellOfSalvage(const Console& console, const std::string& path, const std::string& bytes) {
    if (!IsDamaged(Checker::Check(bytes))) return;
    try {
        const std::string text = Salvager::Take(bytes).Text();
        if (!text.empty())
            console.Complain(path + ": reading could go on at " + text +
                             "; --salvage of convert and show takes it up");
    } catch (const Failure&) {
        // Nothing in it can be taken up.
    }
}

Output::Output(const Console& console, const std::string& path, Overwrite overwrite)
    : console_(console), path_(path), overwrite_(overwrite) {
    if (path != kStandard) ExpectWritable(path, overwrite);
}

void Output::Report(const std::string& line) const {
    console_.Print(path_ == kStandard ? console_.error : console_.out, line);
}

void Output::Write(const std::string& bytes) const {
    console_.ExpectPrinted();
    if (path_ != kStandard) return WriteFile(path_, bytes, overwrite_);
    console_.out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    console_.ExpectPrinted();
}

}  // namespace zel
