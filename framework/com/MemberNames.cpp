#include "MemberNames.h"

namespace zel {

const MemberName* MemberNames::Find(const OLECHAR* name) const noexcept {
    if (!name) return nullptr;
    for (std::size_t slot = FirstSlot(name, LengthOf(name)); slots_[slot] != 0; slot = Next(slot)) {
        const MemberName& member = members_[slots_[slot] - 1];
        std::size_t i = 0;
        while (member.lowerCase[i] != 0 && Folded(name[i]) == Folded(member.lowerCase[i])) ++i;
        if (name[i] == 0 && member.lowerCase[i] == 0) return &member;
    }
    return nullptr;
}

}  // namespace zel
