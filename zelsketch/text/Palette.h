#pragma once

namespace zel {

// The escape sequences of a coloured page; empty where colour is not wanted.
struct Palette {
    const char* heading = "";
    const char* name = "";
    const char* warning = "";
    const char* end = "";

    static Palette Coloured() { return {"\033[1m", "\033[36m", "\033[31m", "\033[0m"}; }
};

}  // namespace zel
