// Kind 35 in the file:
//
//   order  width   field
//   1      24      Raw
//   2      32      First, Second
//   3      8       Value

#include "Kind35Geometry.h"

#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

template <class Archive>
void Kind35Geometry::Fields(Archive& archive) {
    archive.Fields(Named{Raw, "Raw"}, Named{First, "First"}, Named{Second, "Second"}, Named{Value, "Value"});
}

template void Kind35Geometry::Fields(Reader&);
template void Kind35Geometry::Fields(NamedReader&);
template void Kind35Geometry::Fields(Writer&);

}  // namespace zel
