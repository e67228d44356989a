#include "Reader.h"

#include <cstring>

#include "StreamFault.h"

namespace zel {
namespace {

// The get area of any stream buffer, which otherwise only the buffer's own class may use.
struct GetArea : std::streambuf {
    static const char* Begin(const std::streambuf& buffer) { return (buffer.*&GetArea::gptr)(); }
    static const char* End(const std::streambuf& buffer) { return (buffer.*&GetArea::egptr)(); }
    static void Skip(std::streambuf& buffer, int size) { (buffer.*&GetArea::gbump)(size); }
};

}  // namespace

std::size_t Reader::Available() const {
    const std::streambuf& buffer = *stream_.rdbuf();
    return static_cast<std::size_t>(GetArea::End(buffer) - GetArea::Begin(buffer));
}

void Reader::Skip(std::size_t size) { GetArea::Skip(*stream_.rdbuf(), static_cast<int>(size)); }

std::size_t Reader::Bytes(void* to, std::size_t size) {
    if (!stream_.good() || size > Available()) return BytesFromBuffer(to, size);
    std::memcpy(to, GetArea::Begin(*stream_.rdbuf()), size);
    Skip(size);
    return size;
}

std::size_t Reader::BytesFromBuffer(void* to, std::size_t size) {
    if (!stream_.good()) {
        stream_.setstate(std::ios_base::failbit);
        return 0;
    }
    std::streamsize count = 0;
    GuardStream(stream_, [&] {
        count = stream_.rdbuf()->sgetn(static_cast<char*>(to), static_cast<std::streamsize>(size));
    });
    if (static_cast<std::size_t>(count) < size && stream_.good())
        stream_.setstate(std::ios_base::eofbit | std::ios_base::failbit);
    return static_cast<std::size_t>(count);
}

void Reader::Characters(std::string& text, std::size_t length) {
    if (stream_.good() && length <= Available()) {
        const char* begin = GetArea::Begin(*stream_.rdbuf());
        text.assign(begin, strnlen(begin, length));
        Skip(length);
        return;
    }
    text.assign(length, '\0');
    BytesFromBuffer(text.data(), length);
    text.resize(std::strlen(text.c_str()));
}

bool Reader::AtElement() {
    using Traits = std::istream::traits_type;
    if (!stream_.good()) {
        stream_.setstate(std::ios_base::failbit);
        return false;
    }
    auto next = Traits::eof();
    GuardStream(stream_, [&] {
        next = stream_.rdbuf()->sgetc();
        if (next == 0) stream_.rdbuf()->sbumpc();
    });
    if (Traits::eq_int_type(next, Traits::eof()) && stream_.good())
        stream_.setstate(std::ios_base::eofbit | std::ios_base::failbit);
    return stream_.good() && next != 0;
}

}  // namespace zel
