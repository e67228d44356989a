#include "ShortString.h"

#include "Reader.h"
#include "Writer.h"

namespace zel {

std::istream& ShortString::Read(std::istream& stream) {
    Reader(stream).Field(*this);
    return stream;
}

std::ostream& ShortString::Write(std::ostream& stream) {
    Writer(stream).Field(*this);
    return stream;
}

}  // namespace zel
