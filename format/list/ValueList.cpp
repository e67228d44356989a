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
void ValueList::Pass(Archive& archive, std::uint32_t offset, const char* name) {
    MarkerCursor<Archive, ValueList> cursor(archive, *this, name);
    while (auto* value = cursor.Next()) {
        LittleEndian<std::uint32_t> stored{*value + offset};
        archive.Field(stored, "");
        if (Archive::kReads) *value = stored - offset;
    }
}

template void ValueList::Pass(Reader&, std::uint32_t, const char*);
template void ValueList::Pass(Writer&, std::uint32_t, const char*);
template void ValueList::Pass(NamedReader&, std::uint32_t, const char*);

}  // namespace zel
