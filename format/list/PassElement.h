#pragma once

#include <type_traits>

namespace zel {

// How lists take their elements. A record class of this library declares itself as PassedAs and has Pass, one
// walk over its fields for both directions; its elements go through the archive of their list. Any other
// class that follows the record protocol, a class derived from ours included, is asked to Read or Write
// itself.
template <class Element, class = void>
struct HasPass : std::false_type {};
template <class Element>
struct HasPass<Element, std::void_t<typename Element::PassedAs>>
    : std::is_same<typename Element::PassedAs, Element> {};

template <class Archive, class Element>
void PassElement(Archive& archive, Element& element) {
    if constexpr (HasPass<Element>::value) {
        element.Pass(archive);
    } else {
        archive.Foreign(element);
    }
}

// Classes whose elements take no bytes in the file say so with a constant kBodyless.
template <class Element, class = void>
constexpr bool IsBodyless = false;
template <class Element>
constexpr bool IsBodyless<Element, std::enable_if_t<Element::kBodyless>> = true;

}  // namespace zel
