#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>

#include "zel/record/Record.h"

namespace zel {

// What the fuzz targets share.

// Makes a broken promise a finding.
inline void Check(bool holds, const char* promise, const char* where = "") {
    if (holds) return;
    std::fprintf(stderr, "broken promise: %s %s\n", promise, where);
    std::abort();
}

inline std::string_view Input(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// Bytes to read from: the ones given, not a copy of them.
class Bytes : private std::streambuf, public std::istream {
public:
    explicit Bytes(std::string_view bytes) : std::istream(static_cast<std::streambuf*>(this)) {
        char* begin = const_cast<char*>(bytes.data());
        setg(begin, begin, begin + bytes.size());
    }
    std::size_t Left() const { return static_cast<std::size_t>(egptr() - gptr()); }
};

inline std::string Image(Record& record) {
    std::ostringstream stream;
    record.Write(stream);
    Check(stream.good(), "writing to memory never fails");
    return stream.str();
}

}  // namespace zel
