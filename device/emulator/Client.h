#pragma once

#include <string>

#include "Handheld.h"

namespace zel {

// What the library in the module calls a class or an interface.
inline const std::string& GuidOf(const Handheld& handheld, const std::string& name) {
    for (const InterfaceInfo& type : handheld.library->types) {
        if (type.name == name) return type.guid;
    }
    throw Fault("the library has no " + name);
}

// The identifier of a system's interface: its first number, the others are the same for all.
inline std::string SystemIid(Word first) {
    std::string bytes("\0\0\0\0\0\0\0\0\xC0\0\0\0\0\0\0\x46", 16);
    for (int i = 0; i < 4; ++i) bytes[static_cast<std::size_t>(i)] = static_cast<char>(first >> 8 * i);
    return bytes;
}

// A new object of a class, by the interface of its name.
inline Word NewObject(Handheld& handheld, const std::string& name) {
    Word object = 0;
    if (handheld.Create(GuidOf(handheld, name), GuidOf(handheld, "I" + name), object) != kOk)
        throw Fault("no new " + name);
    return object;
}

}  // namespace zel
