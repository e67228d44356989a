#include "Console.h"

#include "zel/text/Failure.h"
#include "zel/text/Text.h"

namespace zel {

void Console::Print(std::ostream& stream, std::string line) const {
    if (progress) progress->Wipe();
    line += '\n';
    stream.flush();
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
    stream.flush();
}

void Console::Complain(const std::string& message) const { Print(error, "zelsketch: " + Shown(message)); }

void Console::ExpectPrinted() const {
    out.flush();
    if (!out) throw Failure(kUnusable, "cannot write to the standard output");
}

}  // namespace zel
