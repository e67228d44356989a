#pragma once

#include <filesystem>

namespace zel {

// What stands in a file that is still being written is worth nothing: it goes when the user interrupts the
// program (Ctrl-C, a closed terminal or console, a request to end), which ends as if nobody had listened.
class Interruption {
public:
    // No interruption comes through while one lives.
    class Hold {
    public:
        Hold();
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
    };

    // Removes `path` at an interruption while this lives. To be made before the file, under one Hold with it.
    class Doomed {
    public:
        explicit Doomed(const std::filesystem::path& path);
        ~Doomed();
        Doomed(const Doomed&) = delete;
        Doomed& operator=(const Doomed&) = delete;

    private:
        const std::filesystem::path path_;
        std::size_t slot_;
    };
};

}  // namespace zel
