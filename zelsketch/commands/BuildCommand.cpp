#include "BuildCommand.h"

#include "zel/json/Assembler.h"
#include "zel/files/Files.h"

namespace zel {

ExitStatus BuildCommand::Run(const Console&) const {
    ExpectWritable(out, Overwrite::kReplace);
    const std::string text = ReadFile(json);
    std::string bytes;
    try {
        bytes = Assembler::Assemble(text);
    } catch (const Failure& failure) {
        throw Failure(failure.status(), json + ": " + failure.what());
    }
    WriteFile(out, bytes, Overwrite::kReplace);
    return kSound;
}

}  // namespace zel
