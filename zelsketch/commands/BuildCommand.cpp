#include "BuildCommand.h"

#include "ForFile.h"
#include "Input.h"
#include "zel/json/Assembler.h"

namespace zel {

ExitStatus BuildCommand::Run(const Console& console) const {
    const Output output(console, out, force ? Overwrite::kForce : Overwrite::kReplace);
    if (IsSameFile(json, out))
        throw Failure(kUnusable, "will not replace " + out + ": it is the JSON itself");
    const std::string text = ReadInput(console, json, kLargestText);
    output.Write(ForFile(json, [&] { return Assembler::Assemble(text); }));
    return kSound;
}

}  // namespace zel
