#pragma once

#include "ElementList.h"
#include "zel/record/ShortString.h"

namespace zel {

// A text list: texts of any length behind an unsigned 16-bit count (a CountedText is something else, a field
// of fixed width). No record here has one; hosts keep their own texts in it. A list of more writes the low
// bits of its size, and as many texts.
class CountedRecordList : public Streamed, public ElementList<ShortString> {
public:
    // Replaces what is held. A list cut short by the end of the stream still gets as many texts as it
    // announces.
    std::istream& Read(std::istream& stream) override;
    std::ostream& Write(std::ostream& stream) override;
};

}  // namespace zel
