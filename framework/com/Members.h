#pragma once

#include <windows.h>
#include <oaidl.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace zel {

// Gets a property into the place of its value in a VARIANT, or puts it from there.
using Accessor = HRESULT (*)(void* object, void* place);

struct Member {
    const char* lowerCase;
    DISPID id;
    VARTYPE type = VT_EMPTY;  // of a property that is read or written here
    Accessor get = nullptr;
    Accessor put = nullptr;
};

// The members of an interface, found by name and by identifier: scripts ask for both at every access, and the
// platform compares one after the other. The names are a hash table that the compiler fills; a look-up costs
// the same for all of them and takes no memory. Upper and lower case are the same, and none has letters
// beyond ASCII.
class Members {
public:
    template <std::size_t count>
    constexpr explicit Members(const Member (&members)[count]) noexcept : members_(members), count_(count) {
        static_assert(count <= kSlots / 2, "probing ends at a free slot, and soon");
        for (std::size_t i = 0; i < count; ++i) {
            std::size_t slot = FirstSlot(members[i].lowerCase, LengthOf(members[i].lowerCase));
            while (slots_[slot] != 0) slot = Next(slot);
            slots_[slot] = static_cast<std::uint8_t>(i + 1);
        }
    }

    // The member of that name, or null. `name` may be null.
    const Member* Find(const OLECHAR* name) const noexcept;

    // Makes the plain calls of an object's properties: a get without arguments, a put of the property's own
    // type or of an integer that it can hold. False for any other call, and for one that failed: it is for
    // the platform to convert, refuse and describe.
    bool Access(void* object, DISPID id, WORD flags, const DISPPARAMS* arguments,
                VARIANT* value) const noexcept;

private:
    static constexpr std::size_t kSlots = 64;

    template <class Character>
    static constexpr std::size_t LengthOf(const Character* name) noexcept {
        std::size_t length = 0;
        while (name[length] != 0) ++length;
        return length;
    }

    template <class Character>
    static constexpr unsigned Folded(Character character) noexcept {
        const unsigned lower = static_cast<unsigned>(character) | 0x20;
        return lower - 'a' <= 'z' - 'a' ? lower : static_cast<unsigned>(character);
    }

    template <class Character>
    static constexpr std::size_t FirstSlot(const Character* name, std::size_t length) noexcept {
        if (length == 0) return 0;
        return (length * 7 + Folded(name[0]) + Folded(name[length - 1]) * 5) % kSlots;
    }
    static constexpr std::size_t Next(std::size_t slot) noexcept { return (slot + 1) % kSlots; }

    const Member* members_;
    std::size_t count_;
    std::uint8_t slots_[kSlots] = {};  // 0 is free, else a member's index plus one
};

// The type of a property's value in a VARIANT.
template <class Value>
struct AutomationType {
    static_assert(std::is_convertible_v<Value, IUnknown*>);
    static constexpr VARTYPE kType = std::is_convertible_v<Value, IDispatch*> ? VT_DISPATCH : VT_UNKNOWN;
};
template <VARTYPE type>
struct AutomationValue {
    static constexpr VARTYPE kType = type;
};
template <>
struct AutomationType<BYTE> : AutomationValue<VT_UI1> {};
template <>
struct AutomationType<USHORT> : AutomationValue<VT_UI2> {};
template <>
struct AutomationType<LONG> : AutomationValue<VT_I4> {};
template <>
struct AutomationType<double> : AutomationValue<VT_R8> {};
template <>
struct AutomationType<BSTR> : AutomationValue<VT_BSTR> {};

template <auto get>
struct Getter;
template <class Interface, class Value, HRESULT (STDMETHODCALLTYPE Interface::*get)(Value*)>
struct Getter<get> {
    static constexpr VARTYPE kType = AutomationType<Value>::kType;
    static HRESULT Call(void* object, void* place) {
        return (static_cast<Interface*>(object)->*get)(static_cast<Value*>(place));
    }
};

template <auto put>
struct Putter;
template <class Interface, class Value, HRESULT (STDMETHODCALLTYPE Interface::*put)(Value)>
struct Putter<put> {
    static HRESULT Call(void* object, void* place) {
        return (static_cast<Interface*>(object)->*put)(*static_cast<Value*>(place));
    }
};

template <auto get>
constexpr Member Property(const char* lowerCase, DISPID id) noexcept {
    return {lowerCase, id, Getter<get>::kType, &Getter<get>::Call};
}
// An object that is put has to be asked for the interface first: the platform does.
template <auto get, auto put>
constexpr Member Property(const char* lowerCase, DISPID id) noexcept {
    constexpr bool isObject = Getter<get>::kType == VT_DISPATCH || Getter<get>::kType == VT_UNKNOWN;
    return {lowerCase, id, Getter<get>::kType, &Getter<get>::Call, isObject ? nullptr : &Putter<put>::Call};
}

// The members of a dual interface, generated from its IDL (see cmake/TypeLibrary.cmake).
template <class Interface>
struct MembersOf;

}  // namespace zel
