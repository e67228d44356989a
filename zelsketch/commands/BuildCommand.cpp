#include "BuildCommand.h"

#include "ForFile.h"
#include "zel/files/Files.h"
#include "zel/json/Assembler.h"

namespace zel {

ExitStatus BuildCommand::Run(const Console&) const {
    const Overwrite overwrite = force ? Overwrite::kForce : Overwrite::kReplace;
    ExpectWritable(out, overwrite);
    if (IsSameFile(json, out))
        throw Failure(kUnusable, "will not replace " + out + ": it is the JSON itself");
    const std::string text = ReadFile(json, kLargestText);
    WriteFile(out, ForFile(json, [&] { return Assembler::Assemble(text); }), overwrite);
    return kSound;
}

}  // namespace zel
