#pragma once

#include <ostream>

namespace zel {

// What a command talks to.
struct Console {
    std::ostream& out;
    std::ostream& error;
    bool hasColour = false;  // out is a terminal whose user has not said NO_COLOR
    bool errorIsTerminal = false;
};

}  // namespace zel
