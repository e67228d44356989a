// Kind 7 in the file:
//
//   order  width   field
//   1      16      Position
//   2      8       Value1
//   3      2 + c   Text, a LongString
//   4      24      Value2 .. Value4
//   5      1 + c   Name, a PlainString

#include "Kind7Geometry.h"

#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

template <class Archive>
void Kind7Geometry::Fields(Archive& archive) {
    archive.Fields(Named{Position, "Position"}, Named{Value1, "Value1"});
    archive.Field(Text, "Text");
    archive.Fields(Named{Value2, "Value2"}, Named{Value3, "Value3"}, Named{Value4, "Value4"});
    archive.Field(Name, "Name");
}

template void Kind7Geometry::Fields(Reader&);
template void Kind7Geometry::Fields(NamedReader&);
template void Kind7Geometry::Fields(Writer&);

}  // namespace zel
