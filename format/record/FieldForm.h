#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "CountedText.h"
#include "LittleEndian.h"

namespace zel {

// What the bytes of a field are.
enum class FieldKind {
    kUnsigned,
    kSigned,
    kReal,
    kRaw,  // bytes without a meaning of their own
    kCounted,
    kFixed,
    kCode,  // a count, then characters that fill the field without a NUL
    kShort,
    kPlain,
    kLong,
    kStyle,       // a style's code, and the PlainString that it announces
    kMarkedList,  // the opening byte of a marked list
    kTypedList,   // the presence byte of a typed list, and its count
    kListEnd,     // the closing byte of a marked list; of a typed list no bytes
    kLeftOver,    // what no reader looks at
};

// A field of numbers may hold several, of `unit` bytes each.
struct FieldForm {
    FieldKind kind;
    std::size_t unit = 0;
};

constexpr FieldForm FormOf(const std::uint8_t&) { return {FieldKind::kUnsigned, 1}; }
template <class T>
constexpr FieldForm FormOf(const LittleEndian<T>&) {
    if (std::is_floating_point_v<T>) return {FieldKind::kReal, sizeof(T)};
    return {std::is_signed_v<T> ? FieldKind::kSigned : FieldKind::kUnsigned, sizeof(T)};
}
template <std::size_t n>
constexpr FieldForm FormOf(const CountedText<n>&) {
    return {FieldKind::kCounted};
}
template <std::size_t n>
constexpr FieldForm FormOf(const FixedText<n>&) {
    return {FieldKind::kFixed};
}
template <std::size_t n>
constexpr FieldForm FormOf(const std::uint8_t (&)[n]) {
    return {FieldKind::kRaw};
}
template <class T, std::size_t n>
constexpr FieldForm FormOf(const LittleEndian<T> (&numbers)[n]) {
    return FormOf(numbers[0]);
}

// A field with its name, for the calls that take several.
template <class T>
struct Named {
    T& field;
    const char* name;
};
template <class T>
Named(T&, const char*) -> Named<T>;

}  // namespace zel
