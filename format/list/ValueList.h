#pragma once

#include <cstdint>

#include "ElementList.h"
#include "zel/record/Streamed.h"

namespace zel {

// Numbers in the marker framing: a byte 1, each value as 4 bytes, a byte 0. A value whose low byte is zero
// ends the list for the reader, and what follows is then misread: a limit of the format, not guarded against.
class ValueList : public Streamed, public ElementList<std::uint32_t> {
public:
    // Replaces what is held.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;

    // In the file each value stands plus `offset`.
    template <class Archive>
    void Pass(Archive& archive, std::uint32_t offset = 0, const char* name = nullptr);
};

}  // namespace zel
