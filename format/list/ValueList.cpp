#include "ValueList.h"

#include "zel/record/LittleEndian.h"
#include "MarkerFraming.h"

namespace zel {

std::istream& ValueList::Read(std::istream& stream) {
    Reader reader(stream);
    Pass(reader);
    return stream;
}

std::ostream& ValueList::Write(std::ostream& stream) {
    Writer writer(stream);
    Pass(writer);
    return stream;
}

template <class Archive>
void ValueList::Pass(Archive& archive, std::uint32_t offset) {
    MarkerCursor<Archive, ValueList> cursor(archive, *this);
    while (auto* value = cursor.Next()) {
        LittleEndian<std::uint32_t> stored{*value + offset};
        archive.Field(stored);
        if (Archive::kReads) *value = stored - offset;
    }
}

template void ValueList::Pass(Reader&, std::uint32_t);
template void ValueList::Pass(Writer&, std::uint32_t);

}  // namespace zel
