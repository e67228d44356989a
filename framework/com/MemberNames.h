#pragma once

#include <windows.h>
#include <oaidl.h>

#include <cstddef>
#include <cstdint>

namespace zel {

struct MemberName {
    const char* lowerCase;
    DISPID id;
};

// The names of an interface's members: a hash table that the compiler fills, so that a look-up costs the same
// for all of them and takes no memory. Upper and lower case are the same; letters beyond ASCII are in none.
class MemberNames {
public:
    template <std::size_t count>
    constexpr explicit MemberNames(const MemberName (&members)[count]) noexcept : members_(members) {
        static_assert(count <= kSlots / 2, "probing ends at a free slot, and soon");
        for (std::size_t i = 0; i < count; ++i) {
            std::size_t slot = FirstSlot(members[i].lowerCase, LengthOf(members[i].lowerCase));
            while (slots_[slot] != 0) slot = Next(slot);
            slots_[slot] = static_cast<std::uint8_t>(i + 1);
        }
    }

    // The member of that name, or null. `name` may be null.
    const MemberName* Find(const OLECHAR* name) const noexcept;

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

    const MemberName* members_;
    std::uint8_t slots_[kSlots] = {};  // 0 is free, else a member's index plus one
};

// The members of a dual interface, generated from its IDL (see cmake/TypeLibrary.cmake).
template <class Interface>
struct MembersOf;

}  // namespace zel
