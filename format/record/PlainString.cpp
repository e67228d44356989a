#include "PlainString.h"

#include "Reader.h"
#include "Writer.h"

namespace zel {

std::istream& PlainString::Read(std::istream& stream) {
    Reader(stream).Field(*this);
    return stream;
}

std::ostream& PlainString::Write(std::ostream& stream) {
    Writer(stream).Field(*this);
    return stream;
}

}  // namespace zel
