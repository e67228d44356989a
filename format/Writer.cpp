#include "Writer.h"

#include <cstring>

#include "StreamFault.h"

namespace zel {
namespace {

// The put area of any stream buffer, which otherwise only the buffer's own class may use.
struct PutArea : std::streambuf {
    static char* Begin(const std::streambuf& buffer) { return (buffer.*&PutArea::pptr)(); }
    static std::size_t Size(const std::streambuf& buffer) {
        return static_cast<std::size_t>((buffer.*&PutArea::epptr)() - Begin(buffer));
    }
    static void Skip(std::streambuf& buffer, std::size_t size) {
        (buffer.*&PutArea::pbump)(static_cast<int>(size));
    }
};

}  // namespace

void Writer::Bytes(const void* from, std::size_t size) {
    // Below this a copy beats a call; it also keeps the step within pbump's int.
    constexpr std::size_t kSmall = 4096;
    if (!stream_.good()) return;
    std::streambuf& buffer = *stream_.rdbuf();
    if (size <= kSmall && size <= PutArea::Size(buffer)) {
        std::memcpy(PutArea::Begin(buffer), from, size);
        PutArea::Skip(buffer, size);
        return;
    }
    std::streamsize count = 0;
    GuardStream(stream_, [&] {
        count = buffer.sputn(static_cast<const char*>(from), static_cast<std::streamsize>(size));
    });
    if (static_cast<std::size_t>(count) != size && stream_.good()) stream_.setstate(std::ios_base::badbit);
}

}  // namespace zel
