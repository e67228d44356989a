#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace zel {

// What a command talks to.
struct Console {
    std::istream& in;
    std::ostream& out;
    std::ostream& error;
    bool hasColour = false;  // out is a terminal whose user has not said NO_COLOR
    bool errorIsTerminal = false;

    // One line in one piece, so that those of programs that run side by side do not mix.
    static void Print(std::ostream& stream, std::string line);
    // "zelsketch: " and the message, whatever stands in a path or a JSON text.
    void Complain(const std::string& message) const;
    // Throws Failure (kUnusable) unless all that was printed has arrived.
    void ExpectPrinted() const;
};

}  // namespace zel
