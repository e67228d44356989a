#include "Writer.h"

#include "StreamFault.h"

namespace zel {

void Writer::BytesToBuffer(const void* from, std::size_t size) {
    if (!state_.good()) return;
    std::streamsize count = 0;
    GuardStream(state_, [&] {
        count = state_.rdbuf()->sputn(static_cast<const char*>(from), static_cast<std::streamsize>(size));
    });
    if (static_cast<std::size_t>(count) != size && state_.good()) state_.setstate(std::ios_base::badbit);
}

}  // namespace zel
