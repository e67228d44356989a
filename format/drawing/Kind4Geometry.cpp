// Kind 4 in the file:
//
//   order  width   field
//   1      32      First, Second
//   2      8       Value

#include "Kind4Geometry.h"

#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

template <class Archive>
void Kind4Geometry::Fields(Archive& archive) {
    archive.Fields(Named{First, "First"}, Named{Second, "Second"}, Named{Value, "Value"});
}

template void Kind4Geometry::Fields(Reader&);
template void Kind4Geometry::Fields(NamedReader&);
template void Kind4Geometry::Fields(Writer&);

}  // namespace zel
