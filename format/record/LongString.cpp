#include "LongString.h"

#include "Reader.h"
#include "Writer.h"

namespace zel {

std::istream& LongString::Read(std::istream& stream) {
    Reader(stream).Field(*this);
    return stream;
}

std::ostream& LongString::Write(std::ostream& stream) {
    Writer(stream).Field(*this);
    return stream;
}

}  // namespace zel
