#include "Reader.h"

#include "StreamFault.h"

namespace zel {
std::size_t Reader::BytesFromBuffer(void* to, std::size_t size) {
    if (!state_.good()) {
        state_.setstate(std::ios_base::failbit);
        return 0;
    }
    std::streamsize count = 0;
    GuardStream(state_, [&] {
        count = state_.rdbuf()->sgetn(static_cast<char*>(to), static_cast<std::streamsize>(size));
    });
    if (static_cast<std::size_t>(count) < size && state_.good())
        state_.setstate(std::ios_base::eofbit | std::ios_base::failbit);
    return static_cast<std::size_t>(count);
}

void Reader::Characters(std::string& text, std::size_t length) {
    if (state_.good() && length <= Available()) {
        const char* begin = GetArea::Begin(*state_.rdbuf());
        text.assign(begin, strnlen(begin, length));
        Skip(length);
        return;
    }
    std::string characters(length, '\0');
    BytesFromBuffer(characters.data(), length);
    characters.resize(strnlen(characters.data(), length));
    text.swap(characters);
}

bool Reader::AtElementOfBuffer() {
    using Traits = std::istream::traits_type;
    if (!state_.good()) {
        state_.setstate(std::ios_base::failbit);
        return false;
    }
    auto next = Traits::eof();
    GuardStream(state_, [&] {
        next = state_.rdbuf()->sgetc();
        if (next == 0) state_.rdbuf()->sbumpc();
    });
    if (Traits::eq_int_type(next, Traits::eof()) && state_.good())
        state_.setstate(std::ios_base::eofbit | std::ios_base::failbit);
    return state_.good() && next != 0;
}

}  // namespace zel
