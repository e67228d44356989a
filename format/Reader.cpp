#include "Reader.h"

#include "StreamFault.h"

namespace zel {
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
    std::string characters(length, '\0');
    BytesFromBuffer(characters.data(), length);
    text.assign(characters.c_str());
}

bool Reader::AtElementOfBuffer() {
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
