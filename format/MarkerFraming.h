#pragma once

#include <cstdint>

#include "Reader.h"
#include "Writer.h"

namespace zel {

// The marker framing of a list in the file: a leading byte 1, the elements back to back, a terminating byte
// 0. The number of elements is not stored; an element is recognised by its first byte, which must not be
// zero.
//
// One pass over such a list, in the direction of the archive. Reading empties the list first and ignores the
// leading byte's value; Append of the list gives each new element the list's version.
template <class Archive, class List>
class MarkerCursor;

template <class List>
class MarkerCursor<Reader, List> {
public:
    MarkerCursor(Reader& reader, List& list) : reader_(reader), list_(list) {
        list_.Clear();
        reader_.Value<std::uint8_t>();
    }

    auto* Next() { return reader_.AtElement() ? &list_.Append() : nullptr; }
    auto* Current() { return &list_.Elements().back(); }

private:
    Reader& reader_;
    List& list_;
};

template <class List>
class MarkerCursor<Writer, List> {
public:
    MarkerCursor(Writer& writer, List& list)
        : writer_(writer), next_(list.Elements().begin()), end_(list.Elements().end()) {
        writer_.Value(std::uint8_t{1});
    }

    auto* Next() {
        if (next_ != end_) return &*next_++;
        writer_.Value(std::uint8_t{0});
        return static_cast<decltype(&*next_)>(nullptr);
    }
    auto* Current() { return &*std::prev(next_); }

private:
    Writer& writer_;
    typename List::Iterator next_;
    typename List::Iterator end_;
};

}  // namespace zel
