#pragma once

#include <cstdint>

#include "zel/record/LittleEndian.h"
#include "zel/list/PlaceholderRecordList.h"
#include "zel/record/ShortString.h"
#include "zel/record/Streamed.h"
#include "zel/list/ValueList.h"
#include "zel/record/Versioned.h"

namespace zel {

// One area of a drawing: its code, texts, measures and the entities it is made of. A new one is empty and
// zero. A copy has no Placeholders.
class AreaRecord : public Streamed, public Versioned {
public:
    using PassedAs = AreaRecord;
    static constexpr std::uint16_t kNoLink = 0xFFFF;

    // Fields that the version lacks keep their value, as does an AreaCode that the file leaves open.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;

    template <class Archive>
    void Pass(Archive& archive);

    ShortString AreaCode;
    ShortString Label;
    std::uint8_t TypeByte = 0;
    LittleEndian<double> Measure1{};
    LittleEndian<double> Measure2{};
    LittleEndian<double> Measure3{};
    LittleEndian<double> Measure4{};
    LittleEndian<double> Measure5{};
    LittleEndian<std::uint16_t> LinkIndex{};
    LittleEndian<std::uint32_t> ExtraValue{};
    std::uint8_t Option1 = 0;
    std::uint8_t Option2 = 0;
    std::uint8_t Option3 = 0;
    ShortString Description;
    ShortString StyleName;
    ValueList MemberIndices;  // counted from zero
    LittleEndian<std::uint16_t> Word1{};
    LittleEndian<std::uint16_t> Word2{};
    LittleEndian<std::uint16_t> Word3{};
    LittleEndian<std::uint32_t> Long1{};
    LittleEndian<std::uint32_t> Long2{};
    LittleEndian<std::uint32_t> Long3{};
    PlaceholderRecordList Placeholders;

private:
    template <class Archive>
    void PassAreaCode(Archive& archive);
    template <class Archive>
    void PassLinkIndex(Archive& archive);
    template <class Archive>
    void PassMemberIndices(Archive& archive);
};

}  // namespace zel
