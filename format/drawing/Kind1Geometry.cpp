// Kind 1 in the file:
//
//   order  width   field  present in versions
//   1      40      Raw    17 and up

#include "Kind1Geometry.h"

#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

template <class Archive>
void Kind1Geometry::Fields(Archive& archive) {
    archive.SetVersion(GetVersion());
    archive.Since(17, Raw, "Raw");
}

template void Kind1Geometry::Fields(Reader&);
template void Kind1Geometry::Fields(NamedReader&);
template void Kind1Geometry::Fields(Writer&);

}  // namespace zel
