// A drawing in the file:
//
//   order  width  field                         present from version
//   1      2 + n  Areas, marker-framed          always
//   2      2 + n  Auxiliaries, marker-framed    always
//   3      2 + n  Styles, marker-framed         always
//   4      24     DrawingExtent                 2
//   5      12     DrawingLong1 .. DrawingLong3  14
//   6      4      DrawingLong4                  15
//   7      3 + n  Entities, typed               always
//   8      3 + n  TypedStyles, typed            always

#include "DrawingRecord.h"

namespace zel {

void DrawingRecord::SetVersion(std::int32_t version) {
    Record::SetVersion(version);
    Areas.SetVersion(version);
    Auxiliaries.SetVersion(version);
    Styles.SetVersion(version);
    Entities.SetVersion(version);
    TypedStyles.SetVersion(version);
}

std::istream& DrawingRecord::Read(std::istream& stream) {
    Reader reader(stream);
    Pass(reader);
    return stream;
}

std::ostream& DrawingRecord::Write(std::ostream& stream) {
    Writer writer(stream);
    Pass(writer);
    return stream;
}

template <class Archive>
void DrawingRecord::Pass(Archive& archive) {
    Areas.Pass(archive, "Areas");
    Auxiliaries.Pass(archive, "Auxiliaries");
    Styles.Pass(archive, "Styles");
    archive.SetVersion(GetVersion());  // the records of the lists walked under their own
    archive.Since(2, DrawingExtent, "DrawingExtent");
    archive.Since(14, DrawingLong1, "DrawingLong1");
    archive.Since(14, DrawingLong2, "DrawingLong2");
    archive.Since(14, DrawingLong3, "DrawingLong3");
    archive.Since(15, DrawingLong4, "DrawingLong4");
    Entities.Pass(archive, "Entities");
    TypedStyles.Pass(archive, "TypedStyles");
}

template void DrawingRecord::Pass(NamedReader&);

}  // namespace zel
