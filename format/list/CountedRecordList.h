#pragma once

#include "ElementList.h"
#include "zel/record/ShortString.h"

namespace zel {

// Texts behind an unsigned 16-bit count. A list of more writes the low bits of its size, and as many texts.
class CountedRecordList : public Streamed, public ElementList<ShortString> {
public:
    // Replaces what is held. A list cut short by the end of the stream still gets as many texts as it
    // announces.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;
};

}  // namespace zel
