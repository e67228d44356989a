#pragma once

#include <cstdint>
#include <iterator>

#include "PassElement.h"
#include "zel/record/NamedReader.h"
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
    TypedCursor(Reader& reader, List& list, const char* = nullptr) : reader_(reader), list_(list) {
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

// Holds one element at a time: nothing is kept of those shown. Ends with the source, whatever was announced.
template <class List>
class TypedCursor<NamedReader, List> {
public:
    TypedCursor(NamedReader& reader, List& list, const char* name)
        : reader_(reader), list_(list), name_(name) {
        list_.Clear();
        const std::string_view opening =
            reader_.Take({FieldKind::kTypedList}, name_, reader_.Peek(0) == 0 ? 3 : 1);
        LittleEndian<std::int16_t> count{};
        if (opening[0] == 0) std::memcpy(&count, &opening[1], sizeof count);
        remaining_ = count;
        reader_.BeginElements(name_);
    }

    auto* Next() {
        if (!list_.Elements().empty()) reader_.EndRecord();
        list_.Clear();
        if (remaining_ > 0 && !reader_.Rest().empty()) {
            --remaining_;
            reader_.BeginRecord();
            std::int16_t code = 0;
            reader_.Value(code, std::remove_reference_t<decltype(list_.Append(code))>::kTypeCodeName);
            return &list_.Append(code);
        }
        reader_.EndElements();
        // Where the source ended too early, what is missing is the next code.
        reader_.Take({FieldKind::kListEnd}, name_, remaining_ > 0 ? sizeof(std::int16_t) : 0);
        return decltype(Current()){nullptr};
    }
    auto* Current() { return &list_.Elements().back(); }

private:
    NamedReader& reader_;
    List& list_;
    const char* name_;
    std::int16_t remaining_ = 0;
};

template <class List>
class TypedCursor<Writer, List> {
public:
    TypedCursor(Writer& writer, List& list, const char* = nullptr)
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
