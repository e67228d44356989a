// The functions and objects of the handheld's automation library.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "Handheld.h"

namespace zel {
namespace {

bool IsObject(std::uint16_t type) { return type == kDispatch || type == kUnknown; }

bool IsNumber(std::uint16_t type) {
    switch (type) {
        case kEmpty:
        case kI1:
        case kI2:
        case kI4:
        case kR4:
        case kR8:
        case kBool:
        case kUI1:
        case kUI2:
        case kUI4:
        case kInt:
        case kUInt:
            return true;
        default:
            return false;
    }
}

double NumberOf(const Value& value) {
    float single;
    switch (value.type) {
        case kI1:
            return static_cast<std::int8_t>(value.data);
        case kI2:
        case kBool:
            return static_cast<std::int16_t>(value.data);
        case kI4:
        case kInt:
            return static_cast<std::int32_t>(value.data);
        case kR4:
            std::memcpy(&single, &value.data, 4);
            return single;
        case kR8:
            return value.AsReal();
        case kUI1:
            return static_cast<std::uint8_t>(value.data);
        case kUI2:
            return static_cast<std::uint16_t>(value.data);
        case kUI4:
        case kUInt:
            return value.Low();
        default:
            return 0;
    }
}

template <class T>
bool Fits(double number) {
    return number >= static_cast<double>(std::numeric_limits<T>::min()) &&
           number <= static_cast<double>(std::numeric_limits<T>::max());
}

// Rounded as automation does: a half to the even side.
Word FromNumber(double number, std::uint16_t type, Value& to) {
    const double whole = std::nearbyint(number);
    bool fits = true;
    std::uint64_t data = 0;
    switch (type) {
        case kI1:
            fits = Fits<std::int8_t>(whole);
            break;
        case kI2:
            fits = Fits<std::int16_t>(whole);
            break;
        case kI4:
        case kInt:
            fits = Fits<std::int32_t>(whole);
            break;
        case kUI1:
            fits = Fits<std::uint8_t>(whole);
            break;
        case kUI2:
            fits = Fits<std::uint16_t>(whole);
            break;
        case kUI4:
        case kUInt:
            fits = Fits<std::uint32_t>(whole);
            break;
        case kBool:
            to = {kBool, number != 0 ? 0xFFFFu : 0u};
            return kOk;
        case kR8:
            to = Value::Real(number);
            return kOk;
        default:
            return kTypeMismatch;
    }
    if (!fits) return kOverflow;
    data = static_cast<std::uint64_t>(static_cast<std::int64_t>(whole));
    const int bits = type == kI1 || type == kUI1 ? 8 : type == kI2 || type == kUI2 ? 16 : 32;
    to = {type, data & ((std::uint64_t{1} << bits) - 1)};
    return kOk;
}

}  // namespace

Value Value::Real(double number) {
    Value value{kR8, 0};
    std::memcpy(&value.data, &number, sizeof number);
    return value;
}

double Value::AsReal() const {
    double number;
    std::memcpy(&number, &data, sizeof number);
    return number;
}

Value Handheld::ReadValue(Word place) const {
    return {machine.Read<std::uint16_t>(place), machine.Read<std::uint64_t>(place + 8)};
}

void Handheld::WriteValue(Word place, const Value& value) {
    machine.Write<std::uint64_t>(place, value.type);
    machine.Write(place + 8, value.data);
}

Word Handheld::NewString(const std::u16string& text) {
    const auto size = static_cast<Word>(2 * text.size());
    const Word block = machine.Allocate(size + 6);
    if (!block) return 0;
    machine.Write(block, size);
    machine.WriteWide(block + 4, text);
    strings_.insert(block + 4);
    return block + 4;
}

void Handheld::FreeString(Word text) {
    if (text == 0) return;
    if (strings_.erase(text) != 1) throw Fault("no automation string");
    machine.Release(text - 4);
}

std::u16string Handheld::StringOf(Word text) const {
    if (text == 0) return {};
    if (!strings_.count(text)) throw Fault("no automation string");
    std::u16string copy(machine.Read<Word>(text - 4) / 2, u'\0');
    machine.ReadBytes(text, copy.data(), 2 * copy.size());
    return copy;
}

void Handheld::Clear(Value value) {
    if (value.type == kBstr) FreeString(value.Low());
    if (IsObject(value.type) && value.Low()) Release(value.Low());
}

Word Handheld::CopyValue(Word to, const Value& from) {
    Value copy = from;
    if (from.type == kBstr && from.Low()) {
        copy.data = NewString(StringOf(from.Low()));
        if (copy.data == 0) return kOutOfMemory;
    }
    if (IsObject(from.type) && from.Low()) AddRef(from.Low());
    WriteValue(to, copy);
    return kOk;
}

// What a value by reference stands for.
Value Handheld::Followed(Value value) const {
    while (value.type & kByRef) {
        const auto type = static_cast<std::uint16_t>(value.type & ~kByRef);
        if (type == kVariant) {
            value = ReadValue(value.Low());
            continue;
        }
        const std::size_t size = type == kR8                                    ? 8
                                 : type == kI2 || type == kUI2 || type == kBool ? 2
                                 : type == kUI1                                 ? 1
                                                                                : 4;
        Value target{type, 0};
        machine.ReadBytes(value.Low(), &target.data, size);
        value = target;
    }
    return value;
}

Word Handheld::Convert(const Value& from, std::uint16_t type, Value& to) {
    const Value value = Followed(from);
    if (value.type == type) {
        Scratch scratch(*this);
        const Word place = scratch.Take(16);
        const Word result = CopyValue(place, value);
        if (result == kOk) to = ReadValue(place);
        return result;
    }
    if (type == kBstr) {
        if (!IsNumber(value.type)) return kTypeMismatch;
        char digits[32] = "";
        if (value.type != kEmpty) std::snprintf(digits, sizeof digits, "%.15g", NumberOf(value));
        to = {kBstr, NewString({digits, digits + std::strlen(digits)})};
        return to.data ? kOk : kOutOfMemory;
    }
    if (IsObject(type) && IsObject(value.type)) {
        to = {type, value.data};
        if (to.Low()) AddRef(to.Low());
        return kOk;
    }
    if (value.type == kBstr) {
        const std::string text = Utf8(StringOf(value.Low()));
        char* end = nullptr;
        const double number = std::strtod(text.c_str(), &end);
        if (text.empty() || *end != '\0') return kTypeMismatch;
        return FromNumber(number, type, to);
    }
    return IsNumber(value.type) ? FromNumber(NumberOf(value), type, to) : Word{kTypeMismatch};
}

std::u16string Handheld::TextOf(const Value& value) {
    Value text;
    if (Convert(value, kBstr, text) != kOk) throw Fault("a value that is no text");
    const std::u16string copy = StringOf(text.Low());
    Clear(text);
    return copy;
}

void Handheld::DefineStrings() {
    Define("SysAllocString", [this] { return A(0) ? NewString(machine.Wide(A(0))) : Word{0}; });
    Define("SysAllocStringLen", [this] {
        std::u16string text(A(1), u'\0');
        if (A(0)) machine.ReadBytes(A(0), text.data(), 2 * text.size());
        return NewString(text);
    });
    Define("SysFreeString", [this] {
        FreeString(A(0));
        return Word{0};
    });
    Define("SysStringLen", [this] { return static_cast<Word>(StringOf(A(0)).size()); });
    Define("SysReAllocString", [this] {
        const Word place = A(0), made = NewString(machine.Wide(A(1)));
        if (!made) return Word{0};
        FreeString(machine.Read<Word>(place));
        machine.Write(place, made);
        return Word{1};
    });
}

void Handheld::DefineValues() {
    Define("VariantInit", [this] {
        machine.Write<std::uint16_t>(A(0), kEmpty);
        return Word{0};
    });
    Define("VariantClear", [this] {
        const Word place = A(0);
        const Value value = ReadValue(place);
        Clear(value);
        machine.Write<std::uint16_t>(place, kEmpty);
        return Word{kOk};
    });
    const auto copy = [this](Word to, Word place, bool follow) {
        const Value from = follow ? Followed(ReadValue(place)) : ReadValue(place);
        const Value old = ReadValue(to);
        if (to == place && from.type == old.type) return Word{kOk};
        Clear(old);
        machine.Write<std::uint16_t>(to, kEmpty);
        return CopyValue(to, from);
    };
    Define("VariantCopy", [=] { return copy(A(0), A(1), false); });
    Define("VariantCopyInd", [=] { return copy(A(0), A(1), true); });
    Define("VariantChangeType", [this] {
        const Word to = A(0), type = A(3);
        Value made;
        const Word result = Convert(ReadValue(A(1)), static_cast<std::uint16_t>(type), made);
        if (result != kOk) return result;
        Clear(ReadValue(to));
        WriteValue(to, made);
        return result;
    });
}

// Objects of the system lie in its own memory and are there for ever; their references must be given back.
Word Handheld::NewSystemObject(Word table, const InterfaceInfo* type) {
    const Word place = permanent_ -= 8;
    machine.Write(place, table);
    objects_[place] = {type, 0};
    return place;
}

void Handheld::DefineTypeLibraries() {
    const auto table = [this](const char* name, std::size_t size, std::map<int, Machine::Function> methods) {
        methods[1] = [this] { return static_cast<Word>(++objects_.at(A(0)).references); };
        methods[2] = [this] {
            if (objects_.at(A(0)).references == 0) throw Fault("released too often");
            return static_cast<Word>(--objects_.at(A(0)).references);
        };
        const Word place = permanent_ -= 4 * static_cast<Word>(size);
        for (int i = 0; i < static_cast<int>(size); ++i) {
            const auto method = methods.find(i);
            const Machine::Function function =
                method != methods.end() ? method->second : []() -> Word { throw Fault("is not imitated"); };
            machine.Write(place + 4 * static_cast<Word>(i),
                          machine.Expose(std::string(name) + " method " + std::to_string(i), function));
        }
        return place;
    };
    libraryTable_ = table("ITypeLib", 13, {{6, [this] {
                                                const InterfaceInfo* type =
                                                    library->Find(machine.Bytes(A(1), 16));
                                                if (!type) return Word{kElementNotFound};
                                                for (auto& [place, object] : objects_) {
                                                    if (object.type != type) continue;
                                                    ++object.references;
                                                    machine.Write(A(2), place);
                                                    return Word{kOk};
                                                }
                                                const Word made = NewSystemObject(infoTable_, type);
                                                objects_[made].references = 1;
                                                machine.Write(A(2), made);
                                                return Word{kOk};
                                            }}});
    infoTable_ =
        table("ITypeInfo", 22,
              {{10,
                [this] {
                    const std::u16string name = machine.Wide(machine.Read<Word>(A(1)));
                    for (const MemberInfo& member : objects_.at(A(0)).type->members) {
                        const std::u16string own(member.name.begin(), member.name.end());
                        if (NoCase()(own, name) || NoCase()(name, own)) continue;
                        machine.Write(A(3), member.id);
                        return Word{A(2) == 1 ? kOk : kUnknownName};
                    }
                    machine.Write<Word>(A(3), 0xFFFFFFFF);
                    return Word{kUnknownName};
                }},
               {11, [this] { return InvokeMember(*objects_.at(A(0)).type, A(1), A(2), A(3), A(4), A(5)); }}});
    libraryObject_ = NewSystemObject(libraryTable_, nullptr);
    Define("LoadTypeLib", [this] {
        if (machine.Wide(A(0)) != std::u16string(kFolder) + u"\\ZEL_BRU.dll") return Word{kElementNotFound};
        ++objects_.at(libraryObject_).references;
        machine.Write(A(1), libraryObject_);
        return Word{kOk};
    });
    Define("RegisterTypeLib", [this] {
        if (A(0) != libraryObject_) throw Fault("another library");
        RegisterLibrary();
        return Word{kOk};
    });
}

void Handheld::RegisterLibrary() {
    const auto wide = [](const std::string& text) { return std::u16string(text.begin(), text.end()); };
    const std::u16string own = wide(GuidText(library->guid)), root = u"Typelib\\" + own + u"\\1.0";
    registry.SetText(root, u"", wide(library->help));
    registry.SetText(root + u"\\409\\win32", u"", std::u16string(kFolder) + u"\\ZEL_BRU.dll");
    registry.SetText(root + u"\\FLAGS", u"", u"8");
    registry.SetText(root + u"\\HELPDIR", u"", kFolder);
    for (const InterfaceInfo& type : library->types) {
        if (type.kind == 5) continue;
        const std::u16string key = u"Interface\\" + wide(GuidText(type.guid));
        registry.SetText(key, u"", wide(type.name));
        for (const char16_t* stub : {u"\\ProxyStubClsid", u"\\ProxyStubClsid32"})
            registry.SetText(key + stub, u"", u"{00020424-0000-0000-C000-000000000046}");
        registry.SetText(key + u"\\TypeLib", u"", own);
        registry.SetText(key + u"\\TypeLib", u"Version", u"1.0");
    }
}

// Adds the words of one argument as the convention passes it; `owned` is to be cleared after the call.
Word Handheld::Pass(const ParameterInfo& parameter, const Value& argument, std::vector<Word>& words,
                    std::vector<Value>& owned) {
    const TypeOf& type = parameter.type;
    if (type.base == kVariant) {
        words.insert(words.end(), {argument.type, 0, argument.Low(), static_cast<Word>(argument.data >> 32)});
        return kOk;
    }
    const Value given = Followed(argument);
    if (type.base == kUserDefined) {
        Word asked = 0;
        if (!IsObject(given.type)) return kTypeMismatch;
        for (const InterfaceInfo& candidate : library->types) {
            if (given.Low() == 0 || candidate.name != type.name) continue;
            if (QueryInterface(given.Low(), candidate.guid, asked) != kOk) return kTypeMismatch;
            owned.push_back({kUnknown, asked});
        }
        words.push_back(asked);
        return kOk;
    }
    Value made;
    const Word result = Convert(given, type.base, made);
    if (result != kOk) return result;
    owned.push_back(made);
    words.push_back(made.Low());
    if (type.base == kR8) words.push_back(static_cast<Word>(made.data >> 32));
    return kOk;
}

Word Handheld::InvokeMember(const InterfaceInfo& type, Word object, Word id, Word flags, Word parameters,
                            Word out) {
    const MemberInfo* member = nullptr;
    for (const MemberInfo& candidate : type.members) {
        if (static_cast<Word>(candidate.id) == id && (static_cast<Word>(candidate.kind) & flags))
            member = &candidate;
    }
    if (!member) return kMemberNotFound;
    const Word values = machine.Read<Word>(parameters), count = machine.Read<Word>(parameters + 8);
    const bool answers = !member->parameters.empty() && member->parameters.back().flags & 8;
    const std::size_t wanted = member->parameters.size() - answers;
    if (count != wanted) return count < wanted ? kParameterNotOptional : kBadParameterCount;

    std::vector<Word> words{object};
    std::vector<Value> owned;
    Word result = kOk;
    for (Word i = 0; i < wanted && result == kOk; ++i)
        result = Pass(member->parameters[i], ReadValue(values + 16 * (count - 1 - i)), words, owned);
    Scratch scratch(*this);
    const Word answer = scratch.Take(16);
    if (answers) words.push_back(answer);
    if (result == kOk) {
        const Word called = machine.Call(
            machine.Read<Word>(machine.Read<Word>(object) + 4 * static_cast<Word>(member->slot)), words);
        if (called & 0x80000000) result = kException;
    }
    for (const Value& value : owned) Clear(value);
    if (!answers || result != kOk) return result;
    const TypeOf& answered = member->parameters.back().type;
    Value value = ReadValue(answer);
    if (answered.base != kVariant) {
        const std::uint16_t kind = answered.base == kUserDefined ? std::uint16_t{kDispatch} : answered.base;
        value = {kind, machine.Read<std::uint64_t>(answer)};
    }
    if (out)
        WriteValue(out, value);
    else
        Clear(value);
    return kOk;
}

}  // namespace zel
