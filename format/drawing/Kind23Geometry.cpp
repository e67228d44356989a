// Kind 23 in the file:
//
//   order  width   field
//   1      1 + c   Name, a PlainString
//   2      40      Value1 .. Value5
//   3      3 + 2n  Records, typed, empty

#include "Kind23Geometry.h"

#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

void Kind23Geometry::SetVersion(std::int32_t version) {
    Versioned::SetVersion(version);
    Records.SetVersion(version);
}

template <class Archive>
void Kind23Geometry::Fields(Archive& archive) {
    archive.PlainText(Name);
    archive.Fields(Value1, Value2, Value3, Value4, Value5);
    Records.Pass(archive);
}

template void Kind23Geometry::Fields(Reader&);
template void Kind23Geometry::Fields(Writer&);

}  // namespace zel
