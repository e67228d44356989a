// An auxiliary record in the file:
//
//   order  width  field                   present in versions
//   1      1      AuxMode                 9 and up
//   2      2 + c  AuxName                 all
//   3      4      AuxLong                 all
//   4      16     AuxBlock16              all
//   5      10     AuxValue1 .. AuxValue5  0 to 20, signed 16 bits each
//          20                             21 and up, 32 bits each
//   6      8      AuxBytes8               all
//   7      32     AuxBytes32              all
//   8      16     AuxReal1, AuxReal2      all
//   9      1      AuxFlag                 all
//   10     8      AuxBytesTail            all
//   11     1      AuxExtra                4 to 8; any other where AuxMode is 2

#include "AuxiliaryRecord.h"

#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

std::istream& AuxiliaryRecord::Read(std::istream& stream) {
    Reader reader(stream);
    Pass(reader);
    return stream;
}

std::ostream& AuxiliaryRecord::Write(std::ostream& stream) {
    Writer writer(stream);
    Pass(writer);
    return stream;
}

template <class Archive>
void AuxiliaryRecord::Pass(Archive& archive) {
    archive.SetVersion(GetVersion());
    archive.Since(9, AuxMode, "AuxMode");
    archive.Field(AuxName, "AuxName");
    archive.Fields(Named{AuxLong, "AuxLong"}, Named{AuxBlock16, "AuxBlock16"});
    PassValues(archive);
    archive.Fields(Named{AuxBytes8, "AuxBytes8"}, Named{AuxBytes32, "AuxBytes32"},
                   Named{AuxReal1, "AuxReal1"}, Named{AuxReal2, "AuxReal2"}, Named{AuxFlag, "AuxFlag"},
                   Named{AuxBytesTail, "AuxBytesTail"});
    const bool always = archive.version() >= 4 && archive.version() <= 8;
    if (always || AuxMode == 2) archive.Field(AuxExtra, "AuxExtra");
}

template <class Archive>
void AuxiliaryRecord::PassValues(Archive& archive) {
    if (archive.version() >= 21)
        return archive.Fields(Named{AuxValue1, "AuxValue1"}, Named{AuxValue2, "AuxValue2"},
                              Named{AuxValue3, "AuxValue3"}, Named{AuxValue4, "AuxValue4"},
                              Named{AuxValue5, "AuxValue5"});
    for (auto [value, name] :
         {Named{AuxValue1, "AuxValue1"}, Named{AuxValue2, "AuxValue2"}, Named{AuxValue3, "AuxValue3"},
          Named{AuxValue4, "AuxValue4"}, Named{AuxValue5, "AuxValue5"}}) {
        LittleEndian<std::int16_t> narrow{static_cast<std::int16_t>(value)};
        archive.Field(narrow, name);
        if (Archive::kReads) value = narrow;
    }
}

template void AuxiliaryRecord::Pass(Reader&);
template void AuxiliaryRecord::Pass(NamedReader&);
template void AuxiliaryRecord::Pass(Writer&);

}  // namespace zel
