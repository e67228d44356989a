// Kind 2 in the file:
//
//   order  width   field
//   1      32      First, Second

#include "Kind2Geometry.h"

#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

template <class Archive>
void Kind2Geometry::Fields(Archive& archive) {
    archive.Fields(Named{First, "First"}, Named{Second, "Second"});
}

template void Kind2Geometry::Fields(Reader&);
template void Kind2Geometry::Fields(NamedReader&);
template void Kind2Geometry::Fields(Writer&);

}  // namespace zel
