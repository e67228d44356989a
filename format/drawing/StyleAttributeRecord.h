#pragma once

#include <cstdint>

#include "zel/record/CountedText.h"
#include "EntityRecord.h"
#include "zel/record/LittleEndian.h"
#include "zel/list/TypedRecordList.h"

namespace zel {

// A named group of entities with a style, of type code 9. A new one is empty and zero.
class StyleAttributeRecord : public TypedRecord, public Versioned {
public:
    using PassedAs = StyleAttributeRecord;
    static constexpr std::int16_t kTypeCode = 9;
    static constexpr char kTypeCodeName[] = "TypeCode";

    void SetVersion(std::int32_t version) override;
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;
    std::int16_t TypeCode() const override { return kTypeCode; }
    const void* Body() const override { return &GroupName; }

    template <class Archive>
    void Pass(Archive& archive);

    FixedText<32> GroupName{};
    std::uint8_t GroupAttribute = 0;
    std::int32_t GroupAttributeCopy = 0;  // follows GroupAttribute on reading; never in the file
    FixedText<36> GroupStyle{};
    LittleEndian<std::uint32_t> GroupValues[4]{};
    TypedRecordList<EntityRecord> Members;
};

}  // namespace zel
