#pragma once

#include "zel/record/Streamed.h"

namespace zel {

// An element that takes no bytes in the file: it keeps a place for what never came.
class PlaceholderRecord : public Streamed {
public:
    using PassedAs = PlaceholderRecord;
    static constexpr bool kBodyless = true;

    std::istream& Read(std::istream& stream) override { return stream; }
    std::ostream& Write(std::ostream& stream) override { return stream; }

    template <class Archive>
    void Pass(Archive&) {}
};

}  // namespace zel
