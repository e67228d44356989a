#include "Members.h"

#include <oleauto.h>

#include <algorithm>

namespace zel {
namespace {

bool Get(void* object, const Member& member, const DISPPARAMS& arguments, VARIANT* value) noexcept {
    if (!member.get || !value || arguments.cArgs != 0 || arguments.cNamedArgs != 0) return false;
    VARIANT got = {};
    if (FAILED(member.get(object, &V_NONE(&got)))) return false;
    V_VT(&got) = member.type;
    *value = got;
    return true;
}

// Scripts write numbers as 32-bit integers, or as 16-bit ones, into properties that hold less.
bool ToNumber(const VARIANT& argument, VARTYPE type, LONG* number) noexcept {
    if (V_VT(&argument) != VT_I4 && V_VT(&argument) != VT_I2) return false;
    *number = V_VT(&argument) == VT_I4 ? V_I4(&argument) : V_I2(&argument);
    const LONG most = type == VT_UI1 ? 0xff : type == VT_UI2 ? 0xffff : type == VT_I4 ? 0x7fffffff : -1;
    return *number >= 0 && *number <= most;
}

bool Put(void* object, const Member& member, const DISPPARAMS& arguments) noexcept {
    if (!member.put || arguments.cArgs != 1 || arguments.cNamedArgs != 1 ||
        arguments.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)
        return false;
    VARIANT& argument = arguments.rgvarg[0];
    LONG number = 0;
    void* place = &number;
    if (V_VT(&argument) == member.type) {
        place = &V_NONE(&argument);
    } else if (!ToNumber(argument, member.type, &number)) {
        return false;
    }
    return SUCCEEDED(member.put(object, place));
}

}  // namespace

const Member* Members::Find(const OLECHAR* name) const noexcept {
    if (!name) return nullptr;
    for (std::size_t slot = FirstSlot(name, LengthOf(name)); slots_[slot] != 0; slot = Next(slot)) {
        const Member& member = members_[slots_[slot] - 1];
        std::size_t i = 0;
        while (member.lowerCase[i] != 0 && Folded(name[i]) == Folded(member.lowerCase[i])) ++i;
        if (name[i] == 0 && member.lowerCase[i] == 0) return &member;
    }
    return nullptr;
}

bool Members::Access(void* object, DISPID id, WORD flags, const DISPPARAMS* arguments,
                     VARIANT* value) const noexcept {
    const auto isIt = [id](const Member& member) { return member.id == id; };
    const Member* member = std::find_if(members_, members_ + count_, isIt);
    if (member == members_ + count_ || !arguments) return false;
    if (flags == DISPATCH_PROPERTYPUT) return Put(object, *member, *arguments);
    const bool gets = flags == DISPATCH_PROPERTYGET || flags == (DISPATCH_PROPERTYGET | DISPATCH_METHOD);
    return gets && Get(object, *member, *arguments, value);
}

}  // namespace zel
