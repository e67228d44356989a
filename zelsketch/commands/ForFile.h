#pragma once

#include <string>

#include "zel/text/Failure.h"

namespace zel {

// Runs a job on the content of a file, whose name goes in front of what the job complains of.
template <class Job>
auto ForFile(const std::string& path, Job job) {
    try {
        return job();
    } catch (const Failure& failure) {
        throw Failure(failure.status(), path + ": " + failure.what());
    }
}

}  // namespace zel
