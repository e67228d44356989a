#pragma once

#include <cstdint>

#include "zel/record/LittleEndian.h"
#include "zel/record/ShortString.h"
#include "zel/record/Streamed.h"
#include "zel/record/Versioned.h"

namespace zel {

// What a drawing holds beside its areas and entities. Its five values were 16 bits wide up to version 20, and
// are 32 bits wide in memory for all versions. A new one is empty and zero.
class AuxiliaryRecord : public Streamed, public Versioned {
public:
    using PassedAs = AuxiliaryRecord;

    std::istream& Read(std::istream& stream) override;
    // Up to version 20 the values lose their high bits in the file.
    std::ostream& Write(std::ostream& stream) override;

    template <class Archive>
    void Pass(Archive& archive);

    std::uint8_t AuxMode = 0;
    ShortString AuxName;
    LittleEndian<std::uint32_t> AuxLong{};
    std::uint8_t AuxBlock16[16] = {};
    LittleEndian<std::int32_t> AuxValue1{};
    LittleEndian<std::int32_t> AuxValue2{};
    LittleEndian<std::int32_t> AuxValue3{};
    LittleEndian<std::int32_t> AuxValue4{};
    LittleEndian<std::int32_t> AuxValue5{};
    std::uint8_t AuxBytes8[8] = {};
    std::uint8_t AuxBytes32[32] = {};
    LittleEndian<double> AuxReal1{};
    LittleEndian<double> AuxReal2{};
    std::uint8_t AuxFlag = 0;
    std::uint8_t AuxBytesTail[8] = {};
    std::uint8_t AuxExtra = 0;

private:
    template <class Archive>
    void PassValues(Archive& archive);
};

}  // namespace zel
