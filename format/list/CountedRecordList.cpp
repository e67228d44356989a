// A text list in the file:
//
//   order  width   field
//   1      2       count, unsigned
//   2      2 + c   each text, a ShortString

#include "CountedRecordList.h"

#include <cstdint>

#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

std::istream& CountedRecordList::Read(std::istream& stream) {
    Reader reader(stream);
    Clear();
    for (std::uint16_t left = reader.Value<std::uint16_t>(); left > 0 && reader.MayAppend(); --left)
        reader.Field(Append());
    return stream;
}

std::ostream& CountedRecordList::Write(std::ostream& stream) {
    Writer writer(stream);
    auto left = static_cast<std::uint16_t>(size());
    writer.Value(left);
    for (auto text = begin(); left > 0; ++text, --left) writer.Field(*text);
    return stream;
}

}  // namespace zel
