#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel {

// Types of automation values, as type libraries and VARIANTs say them.
enum VariantType : std::uint16_t {
    kEmpty = 0,
    kNull = 1,
    kI2 = 2,
    kI4 = 3,
    kR4 = 4,
    kR8 = 5,
    kBstr = 8,
    kDispatch = 9,
    kError = 10,
    kBool = 11,
    kVariant = 12,
    kUnknown = 13,
    kI1 = 16,
    kUI1 = 17,
    kUI2 = 18,
    kUI4 = 19,
    kInt = 22,
    kUInt = 23,
    kHresult = 25,
    kPointer = 26,
    kUserDefined = 29,
    kByRef = 0x4000
};

struct TypeOf {
    std::uint16_t base = 0;  // behind all pointers
    int pointers = 0;
    std::string name;  // of a user-defined type
};

struct ParameterInfo {
    std::string name;
    TypeOf type;
    std::uint32_t flags = 0;  // 1 in, 2 out, 8 the result
};

struct MemberInfo {
    std::string name, help;
    std::int32_t id = 0;
    int kind = 0;  // 1 method, 2 get, 4 put
    int slot = 0;
    std::uint32_t flags = 0;
    TypeOf result;
    std::vector<ParameterInfo> parameters;
};

struct InterfaceInfo {
    std::string name, help;
    std::string guid;  // 16 bytes
    int kind = 0;      // 5 a class
    std::uint32_t flags = 0;
    std::vector<MemberInfo> members;
};

// What a type library says: read from the bytes of one, as the build leaves it in the module's resource.
struct TypeLibraryInfo {
    explicit TypeLibraryInfo(std::string bytes);

    const InterfaceInfo* Find(const std::string& guid) const;

    std::string name, help, guid;
    std::vector<InterfaceInfo> types;

private:
    template <class T>
    T At(std::uint32_t offset) const;
    std::string NameAt(std::int32_t offset) const;
    std::string StringAt(std::int32_t offset) const;
    std::string GuidAt(std::int32_t offset) const;
    TypeOf Describe(std::int32_t type) const;
    void ReadMembers(InterfaceInfo& type, std::uint32_t place, std::uint32_t count) const;

    std::string bytes_;
    std::vector<std::uint32_t> segments_;
};

// "{B60E8746-DBDD-468E-8FBE-6FAF6A683007}" of 16 bytes.
std::string GuidText(const std::string& bytes);

}  // namespace zel
