#pragma once

#include <cstdint>
#include <iterator>

#include "PassElement.h"
#include "zel/record/NamedReader.h"
#include "zel/record/Reader.h"
#include "zel/record/Writer.h"

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
    MarkerCursor(Reader& reader, List& list, const char* = nullptr) : reader_(reader), list_(list) {
        list_.Clear();
        reader_.Value<std::uint8_t>();
    }

    auto* Next() {
        auto* none = decltype(&list_.Append()){nullptr};
        if (!reader_.AtElement()) return none;
        // Elements without a byte of their own would never get past the one that announces them.
        if constexpr (IsBodyless<std::remove_reference_t<decltype(list_.Append())>>) {
            reader_.Fail();
            return none;
        } else {
            return &list_.Append();
        }
    }
    auto* Current() { return &list_.Elements().back(); }

private:
    Reader& reader_;
    List& list_;
};

template <class List>
class MarkerCursor<Writer, List> {
public:
    MarkerCursor(Writer& writer, List& list, const char* = nullptr)
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

// Holds one element at a time: nothing is kept of those shown.
template <class List>
class MarkerCursor<NamedReader, List> {
public:
    MarkerCursor(NamedReader& reader, List& list, const char* name)
        : reader_(reader), list_(list), name_(name) {
        list_.Clear();
        reader_.Take({FieldKind::kMarkedList}, name_, 1);
        reader_.BeginElements(name_);
    }

    auto* Next() {
        using Element = std::remove_reference_t<decltype(list_.Append())>;
        constexpr bool kIsRecord = std::is_class_v<Element>;
        if (kIsRecord && !list_.Elements().empty()) reader_.EndRecord();
        list_.Clear();
        if (reader_.AtElement()) {
            if constexpr (IsBodyless<Element>) {
                reader_.Fail();
            } else {
                kIsRecord ? reader_.BeginRecord() : reader_.BeginValue();
                return &list_.Append();
            }
        }
        reader_.EndElements();
        reader_.Take({FieldKind::kListEnd}, name_, 1);
        return static_cast<Element*>(nullptr);
    }
    auto* Current() { return &list_.Elements().back(); }

private:
    NamedReader& reader_;
    List& list_;
    const char* name_;
};

// The whole list, in the direction of the archive.
template <class Archive, class List>
void PassMarkerList(Archive& archive, List& list, const char* name) {
    MarkerCursor<Archive, List> cursor(archive, list, name);
    while (auto* element = cursor.Next()) PassElement(archive, *element);
}

}  // namespace zel
