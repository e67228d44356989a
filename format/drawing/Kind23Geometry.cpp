// Kind 23 in the file:
//
//   order  width   field
//   1      1 + c   Name, a PlainString
//   2      40      Value1 .. Value5
//   3      3 + 2n  Records, typed, empty

#include "Kind23Geometry.h"

#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

void Kind23Geometry::SetVersion(std::int32_t version) {
    Versioned::SetVersion(version);
    Records.SetVersion(version);
}

template <class Archive>
void Kind23Geometry::Fields(Archive& archive) {
    archive.PlainText(Name, "Name");
    archive.Fields(Named{Value1, "Value1"}, Named{Value2, "Value2"}, Named{Value3, "Value3"},
                   Named{Value4, "Value4"}, Named{Value5, "Value5"});
    Records.Pass(archive, "Records");
}

template void Kind23Geometry::Fields(Reader&);
template void Kind23Geometry::Fields(NamedReader&);
template void Kind23Geometry::Fields(Writer&);

}  // namespace zel
