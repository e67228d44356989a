#include "TypeInfo.h"

#include <cctype>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace zel {
namespace {

// The file: a header of 21 words, the offset of each type's row, then this directory: for each segment its
// offset, its length and two words more.
constexpr std::uint32_t kHeaderSize = 0x54, kTypeSize = 0x64;
enum Segment { kTypes = 0, kGuids = 5, kNames = 7, kStrings = 8, kDescriptions = 9 };
constexpr std::uint32_t kSegments = 15;

}  // namespace

template <class T>
T TypeLibraryInfo::At(std::uint32_t offset) const {
    T value;
    if (offset + sizeof value > bytes_.size()) throw std::out_of_range("type library");
    std::memcpy(&value, bytes_.data() + offset, sizeof value);
    return value;
}

std::string TypeLibraryInfo::NameAt(std::int32_t offset) const {
    if (offset < 0) return {};
    const std::uint32_t at = segments_[kNames] + static_cast<std::uint32_t>(offset);
    return bytes_.substr(at + 12, At<std::uint8_t>(at + 8));
}

std::string TypeLibraryInfo::StringAt(std::int32_t offset) const {
    if (offset < 0) return {};
    const std::uint32_t at = segments_[kStrings] + static_cast<std::uint32_t>(offset);
    return bytes_.substr(at + 2, At<std::uint16_t>(at));
}

std::string TypeLibraryInfo::GuidAt(std::int32_t offset) const {
    return offset < 0 ? std::string(16, '\0')
                      : bytes_.substr(segments_[kGuids] + static_cast<std::uint32_t>(offset), 16);
}

// A simple type is its own number with the highest bit; others are rows of four words.
TypeOf TypeLibraryInfo::Describe(std::int32_t type) const {
    TypeOf described;
    for (;;) {
        if (type < 0) {
            described.base = static_cast<std::uint16_t>(type & 0xFFF);
            return described;
        }
        const std::uint32_t row = segments_[kDescriptions] + static_cast<std::uint32_t>(type);
        const auto kind = static_cast<std::uint16_t>(At<std::uint16_t>(row) & 0xFFF);
        if (kind != kPointer) {
            described.base = kind;
            const auto reference = At<std::uint32_t>(row + 4);
            const bool here = kind == kUserDefined && (reference & 3) == 0;
            described.name =
                here ? NameAt(At<std::int32_t>(segments_[kTypes] + reference + 0x34)) : "IUnknown";
            return described;
        }
        ++described.pointers;
        type = At<std::int16_t>(row + 6) < 0
                   ? static_cast<std::int32_t>(0x80000000u | At<std::uint16_t>(row + 4))
                   : At<std::int32_t>(row + 4);
    }
}

// Rows of their own length, then for all of them the identifiers and the names.
void TypeLibraryInfo::ReadMembers(InterfaceInfo& type, std::uint32_t place, std::uint32_t count) const {
    const std::uint32_t lists = place + 4 + At<std::uint32_t>(place);
    std::uint32_t row = place + 4;
    for (std::uint32_t i = 0; i < count; ++i) {
        MemberInfo member;
        const std::uint32_t length = At<std::uint16_t>(row);
        const std::uint32_t kinds = At<std::uint32_t>(row + 0x10), parameters = At<std::uint16_t>(row + 0x14);
        member.id = At<std::int32_t>(lists + 4 * i);
        member.name = NameAt(At<std::int32_t>(lists + 4 * (count + i)));
        member.kind = static_cast<int>(kinds >> 3 & 0xF);
        member.slot = (At<std::uint16_t>(row + 0xC) & ~1) / 4;
        member.flags = At<std::uint32_t>(row + 8);
        member.result = Describe(At<std::int32_t>(row + 4));
        if (length > 0x18 + 12 * parameters + 4) member.help = StringAt(At<std::int32_t>(row + 0x1C));
        for (std::uint32_t at = row + length - 12 * parameters; at < row + length; at += 12) {
            member.parameters.push_back({NameAt(At<std::int32_t>(at + 4)), Describe(At<std::int32_t>(at)),
                                         At<std::uint32_t>(at + 8)});
        }
        type.members.push_back(std::move(member));
        row += length;
    }
}

TypeLibraryInfo::TypeLibraryInfo(std::string bytes) : bytes_(std::move(bytes)) {
    if (bytes_.substr(0, 4) != "MSFT") throw std::runtime_error("no type library");
    const auto count = At<std::uint32_t>(0x20);
    std::uint32_t directory = kHeaderSize + 4 * count;
    if (At<std::uint32_t>(0x14) & 0x100) directory += 4;  // the name of a help library
    for (std::uint32_t i = 0; i < kSegments; ++i) segments_.push_back(At<std::uint32_t>(directory + 16 * i));
    name = NameAt(At<std::int32_t>(0x38));
    help = StringAt(At<std::int32_t>(0x24));
    guid = GuidAt(At<std::int32_t>(0x08));
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t row = segments_[kTypes] + kTypeSize * i;
        InterfaceInfo type;
        type.kind = static_cast<int>(At<std::uint32_t>(row) & 0xF);
        type.name = NameAt(At<std::int32_t>(row + 0x34));
        type.help = StringAt(At<std::int32_t>(row + 0x3C));
        type.guid = GuidAt(At<std::int32_t>(row + 0x2C));
        type.flags = At<std::uint32_t>(row + 0x30);
        const std::uint32_t members = At<std::uint16_t>(row + 0x18);
        if (members > 0) ReadMembers(type, At<std::uint32_t>(row + 4), members);
        types.push_back(std::move(type));
    }
}

const InterfaceInfo* TypeLibraryInfo::Find(const std::string& wanted) const {
    for (const InterfaceInfo& type : types) {
        if (type.guid == wanted) return &type;
    }
    return nullptr;
}

std::string GuidText(const std::string& bytes) {
    std::uint32_t first;
    std::uint16_t second, third;
    std::memcpy(&first, &bytes[0], 4);
    std::memcpy(&second, &bytes[4], 2);
    std::memcpy(&third, &bytes[6], 2);
    char text[40];
    int at = std::snprintf(text, sizeof text, "{%08X-%04X-%04X-", first, second, third);
    for (std::size_t i = 8; i < 16; ++i)
        at += std::snprintf(text + at, sizeof text - static_cast<std::size_t>(at), i == 10 ? "-%02X" : "%02X",
                            static_cast<unsigned char>(bytes[i]));
    return std::string(text) + "}";
}

}  // namespace zel
