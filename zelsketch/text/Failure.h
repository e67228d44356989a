#pragma once

#include <stdexcept>
#include <string>

namespace zel {

// The exit statuses of every command.
enum ExitStatus {
    kSound = 0,
    kDamaged = 1,   // the file was read, and something is wrong with it
    kUnusable = 2,  // a file cannot be read or written, or the command line is wrong
};

// Ends a command with one line for its user.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& message) : std::runtime_error(message), status_(status) {}
    ExitStatus status() const { return status_; }

private:
    ExitStatus status_;
};

}  // namespace zel
