#pragma once

#include <cstdint>

#include "AreaRecord.h"
#include "AuxiliaryRecord.h"
#include "EntityRecord.h"
#include "zel/record/LittleEndian.h"
#include "zel/record/Record.h"
#include "StyleAttributeRecord.h"
#include "zel/list/TypedRecordList.h"
#include "zel/list/VersionedRecordList.h"

namespace zel {

// The drawn content of a sketch. Owns all of it. A new one is empty and zero, with version 0; SetVersion
// reaches every record in it but the geometries of entities.
class DrawingRecord : public Record {
public:
    void SetVersion(std::int32_t version) override;
    // Fields that the version lacks keep their value.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;

    // All of it in file order. An archive is a Reader, a Writer or a NamedReader.
    template <class Archive>
    void Pass(Archive& archive);

    VersionedRecordList<AreaRecord> Areas;
    VersionedRecordList<AuxiliaryRecord> Auxiliaries;
    VersionedRecordList<StyleAttributeRecord> Styles;
    LittleEndian<double> DrawingExtent[3]{};
    LittleEndian<std::uint32_t> DrawingLong1{};
    LittleEndian<std::uint32_t> DrawingLong2{};
    LittleEndian<std::uint32_t> DrawingLong3{};
    LittleEndian<std::uint32_t> DrawingLong4{};
    TypedRecordList<EntityRecord> Entities;
    TypedRecordList<StyleAttributeRecord> TypedStyles;
};

}  // namespace zel
