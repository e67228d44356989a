// Kind 13 in the file:
//
//   order  width   field
//   1      2       Short, signed
//   2      16      Value1, Value2
//   3      3 + n   Entities, typed

#include "Kind13Geometry.h"

#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

void Kind13Geometry::SetVersion(std::int32_t version) {
    Versioned::SetVersion(version);
    Entities.SetVersion(version);
}

std::unique_ptr<EntityGeometry> Kind13Geometry::Clone() const {
    auto copy = std::make_unique<Kind13Geometry>();
    copy->Versioned::SetVersion(GetVersion());
    copy->Entities.Versioned::SetVersion(Entities.GetVersion());
    copy->Short = Short;
    copy->Value1 = Value1;
    copy->Value2 = Value2;
    copy->Entities.OmitWhenEmpty = Entities.OmitWhenEmpty;
    return copy;
}

template <class Archive>
void Kind13Geometry::Fields(Archive& archive) {
    archive.Fields(Named{Short, "Short"}, Named{Value1, "Value1"}, Named{Value2, "Value2"});
}

template void Kind13Geometry::Fields(Reader&);
template void Kind13Geometry::Fields(NamedReader&);
template void Kind13Geometry::Fields(Writer&);

}  // namespace zel
