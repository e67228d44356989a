#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "zel/record/Record.h"

namespace zel {

// What the fuzz targets share.

// Makes a failed promise a finding.
inline void Check(bool holds, const char* promise) {
    if (holds) return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

template <class Piece>
std::string Image(Piece& record) {
    std::ostringstream stream;
    record.Write(stream);
    Check(stream.good(), "writing to memory never fails");
    return stream.str();
}

struct Load {
    bool complete;
    std::size_t consumed;
};

inline Load ReadImage(Record& record, const std::string& bytes) {
    std::istringstream stream(bytes);
    record.Read(stream);
    return {stream.good(), bytes.size() - static_cast<std::size_t>(stream.rdbuf()->in_avail())};
}

// Where a target puts its seeds before the run, or null.
inline const char* SeedFolder() { return std::getenv("ZEL_SEEDS"); }

inline void WriteSeed(const char* folder, const std::string& name, const std::string& bytes) {
    std::ofstream(std::string(folder) + '/' + name, std::ios_base::binary) << bytes;
}

}  // namespace zel
