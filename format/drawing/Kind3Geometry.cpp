// Kind 3 in the file:
//
//   order  width   field
//   1      16      Position
//   2      8       Value

#include "Kind3Geometry.h"

#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

template <class Archive>
void Kind3Geometry::Fields(Archive& archive) {
    archive.Fields(Named{Position, "Position"}, Named{Value, "Value"});
}

template void Kind3Geometry::Fields(Reader&);
template void Kind3Geometry::Fields(NamedReader&);
template void Kind3Geometry::Fields(Writer&);

}  // namespace zel
