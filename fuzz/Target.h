#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <istream>
#include <ostream>
#include <streambuf>
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

// What records write, in room that is kept from one to the next but handed out bit by bit, so that buffers
// end in all places.
class Output : public std::streambuf {
public:
    std::string_view Image(Record& record) {
        Give(0);
        std::ostream stream(this);
        record.Write(stream);
        Check(stream.good(), "writing to memory never fails");
        return {pbase(), static_cast<std::size_t>(pptr() - pbase())};
    }

private:
    int_type overflow(int_type character) override {
        Give(static_cast<std::size_t>(pptr() - pbase()));
        return sputc(traits_type::to_char_type(character));
    }
    void Give(std::size_t used) {
        const std::size_t size = 2 * used + 64;
        if (size > room_.size()) room_.resize(size);
        setp(room_.data(), room_.data() + size);
        pbump(static_cast<int>(used));
    }

    std::string room_;
};

// Good until the next.
inline std::string_view Image(Record& record) {
    static Output output;
    return output.Image(record);
}

}  // namespace zel
