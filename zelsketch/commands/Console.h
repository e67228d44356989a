#pragma once

#include <istream>
#include <ostream>
#include <string>

#include "Progress.h"

namespace zel {

// What a command talks to.
struct Console {
    std::istream& in;
    std::ostream& out;
    std::ostream& error;
    bool hasColour = false;  // out shows colours, and its user has not said NO_COLOR
    bool errorIsTerminal = false;
    bool outIsTerminal = false;
    Progress* progress = nullptr;

    // One line in one piece, so that those of programs that run side by side do not mix.
    void Print(std::ostream& stream, std::string line) const;
    // "zelsketch: " and the message, whatever stands in a path or a JSON text.
    void Complain(const std::string& message) const;
    // Throws Failure (kUnusable) unless all that was printed has arrived.
    void ExpectPrinted() const;
    // For commands that print as they go: on a terminal the output itself shows how far they have come.
    void ShowProgressBesideOutput() const {
        if (outIsTerminal) progress->LeaveTerminal();
    }
};

}  // namespace zel
