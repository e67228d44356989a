// Kind 14 in the file:
//
//   order  width   field
//   1      24      Raw
//   2      24      Value1 .. Value3

#include "Kind14Geometry.h"

#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

template <class Archive>
void Kind14Geometry::Fields(Archive& archive) {
    archive.Fields(Named{Raw, "Raw"}, Named{Value1, "Value1"}, Named{Value2, "Value2"},
                   Named{Value3, "Value3"});
}

template void Kind14Geometry::Fields(Reader&);
template void Kind14Geometry::Fields(NamedReader&);
template void Kind14Geometry::Fields(Writer&);

}  // namespace zel
