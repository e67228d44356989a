#pragma once

#include <cstdint>
#include <iterator>

#include "PassElement.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

namespace zel {

// The typed framing of a list in the file: a presence byte 0, a signed 16-bit count, then each element behind
// its 16-bit type code. A list that is left out is a presence byte 1 alone. Type codes select nothing here:
// elements of a list are of one class.
//
// One pass over such a list, in the direction of the archive. Reading empties the list first.
template <class Archive, class List>
class TypedCursor;

template <class List>
class TypedCursor<Reader, List> {
public:
    TypedCursor(Reader& reader, List& list) : reader_(reader), list_(list) {
        list_.Clear();
        if (reader_.Value<std::uint8_t>() == 0) remaining_ = reader_.Value<std::int16_t>();
    }

    auto* Next() {
        if (remaining_ <= 0 || !reader_.MayAppend()) return decltype(Current()){nullptr};
        --remaining_;
        return &list_.Append(reader_.Value<std::int16_t>());
    }
    auto* Current() { return &list_.Elements().back(); }

private:
    Reader& reader_;
    List& list_;
    std::int16_t remaining_ = 0;
};

template <class List>
class TypedCursor<Writer, List> {
public:
    TypedCursor(Writer& writer, List& list)
        : writer_(writer), next_(list.Elements().begin()), end_(list.Elements().end()) {
        const bool omitted = list.OmitWhenEmpty && list.Elements().empty();
        writer_.Value(static_cast<std::uint8_t>(omitted));
        if (!omitted) writer_.Value(static_cast<std::uint16_t>(list.Elements().size()));
    }

    auto* Next() {
        if (next_ == end_) return decltype(Current()){nullptr};
        writer_.Value(static_cast<std::int16_t>(next_->TypeCode()));
        return &*next_++;
    }
    auto* Current() { return &*std::prev(next_); }

private:
    Writer& writer_;
    typename List::Iterator next_;
    typename List::Iterator end_;
};

}  // namespace zel
