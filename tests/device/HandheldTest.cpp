#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>

#include <gtest/gtest.h>

#include "zel/emulator/Client.h"
#include "format/HexDump.h"

namespace zel {
namespace {

constexpr char kNoAggregation[] = "80040110";

// 16 bytes of "0000010D-0000-0000-C000-000000000046".
std::string Guid(const std::string& text) {
    std::string digits, bytes;
    for (const char letter : text) {
        if (letter != '-') digits += letter;
    }
    for (const int place : {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15})
        bytes +=
            static_cast<char>(std::stoul(digits.substr(2 * static_cast<std::size_t>(place), 2), nullptr, 16));
    return bytes;
}
const std::string kIUnknown = Guid("00000000-0000-0000-C000-000000000046");
const std::string kIDispatch = Guid("00020400-0000-0000-C000-000000000046");
const std::string kIViewObject = Guid("0000010D-0000-0000-C000-000000000046");
const std::string kIOleObject = Guid("00000112-0000-0000-C000-000000000046");
const std::string kIEnumVariant = Guid("00020404-0000-0000-C000-000000000046");

std::string TextOf(const std::string& file) {
    std::string text{std::istreambuf_iterator<char>(std::ifstream(file).rdbuf()), {}};
    for (std::size_t at; (at = text.find("FOLDER")) != text.npos;)
        text.replace(at, 6, Utf8(Handheld::kFolder));
    return text;
}

// The module on a handheld; after each test it must go and leave nothing, having used little of its stack.
class HandheldTest : public testing::Test {
protected:
    explicit HandheldTest(Word base = Handheld::kPreferredBase) : handheld_(ZEL_MODULE, base) {}
    void TearDown() override {
        EXPECT_EQ(handheld_.Unload(), "");
        EXPECT_LE(machine_.StackUsed(), 8192u);
    }

    Value Get(Word object, const std::u16string& name, std::vector<Value> arguments = {}) {
        Value value;
        EXPECT_EQ(handheld_.CallByName(object, name, 3, std::move(arguments), value), kOk) << Utf8(name);
        return value;
    }
    // What a getter gives through the vtable: a result to be told apart from the bytes before it.
    Word GetDirectly(Word object, const MemberInfo& member, Value& value) {
        Handheld::Scratch scratch(handheld_);
        scratch.Take(4);
        const Word place = scratch.Take(16) + 4;  // a client's double may lie at a multiple of 4
        const Word result = machine_.Invoke(object, member.slot, place);
        value.data = machine_.Read<Word>(place) | std::uint64_t{machine_.Read<Word>(place + 4)} << 32;
        value.type = member.parameters[0].type.base;
        return result;
    }
    // Saves a store below a path of ours, or loads it; the `Result`, or 99 where the call did nothing.
    Word Run(int slot, Word store, const std::u16string& path = u"\\f") {
        Handheld::Scratch scratch(handheld_);
        const Word result = scratch.Take(4), name = handheld_.NewString(path);
        machine_.Write<Word>(result, 99);
        last_ = machine_.Invoke(store, slot, name, result);
        handheld_.FreeString(name);
        return machine_.Read<Word>(result);
    }
    Word Load(Word store) { return Run(kLoadSlot, store); }
    Word Save(Word store) { return Run(kSaveSlot, store); }
    // A store with a definition that has a member, all with texts that take memory of their own.
    Word NewTree() {
        const Word store = NewObject(handheld_, "BRU_Store");
        Value list = Get(store, u"Definitions");
        for (const char16_t* code : {u"a code of some length", u"a long code of a member"}) {
            const Word definition = NewObject(handheld_, "ZEL_Definition");
            const Value text{kBstr, handheld_.NewString(code)};
            Value nothing;
            handheld_.CallByName(definition, u"AreaCode", 4, {text}, nothing);
            Get(list.Low(), u"Add", {Value::Object(definition)});
            handheld_.Clear(text);
            handheld_.Clear(list);
            list = Get(definition, u"Members");
            handheld_.Release(definition);
        }
        handheld_.Clear(list);
        return store;
    }

    static constexpr char kTree[] =
        "07 'TRN4WIN' 00*3 40 10 01 00*2 00 05 00*89 00*5 01 06 15 'a code of some length' 00*110 06 00 "
        "01 06 17 'a long code of a member' 00*110 06 00 01 00*3";
    static constexpr int kLoadSlot = 11, kSaveSlot = 12;
    Handheld handheld_;
    Machine& machine_ = handheld_.machine;
    Word last_ = 0;
};

class AtAnyAddress : public HandheldTest, public testing::WithParamInterface<Word> {
protected:
    AtAnyAddress() : HandheldTest(GetParam()) {}
};

TEST_P(AtAnyAddress, LoadsWorksAndSaves) {
    const Word store = NewTree();
    EXPECT_EQ(Save(store), 0u);
    EXPECT_EQ(Load(store), 0u);
    EXPECT_TRUE(SameBytes(Hex(kTree), handheld_.files.at(u"\\f")));
    handheld_.Release(store);
}
INSTANTIATE_TEST_SUITE_P(Handheld, AtAnyAddress,
                         testing::Values(Handheld::kPreferredBase, Handheld::kOtherBase));

// What the system's reader of type libraries finds in the desktop's module must be what ours finds in this
// one.
TEST_F(HandheldTest, DescribesItsMembersAsTheDesktopDoes) {
    const std::map<int, std::string> names = {
        {kI4, "long"},           {kR8, "double"},         {kBstr, "BSTR"},          {kVariant, "VARIANT"},
        {kUnknown, "IUnknown*"}, {kUI1, "unsigned char"}, {kUI2, "unsigned short"}, {kHresult, "HRESULT"}};
    const std::map<Word, std::string> directions = {{0, ""}, {1, "[in] "}, {10, "[out, retval] "}};
    const std::map<int, std::string> kinds = {{1, "method"}, {2, "get"}, {4, "put"}};
    const auto name = [&](const TypeOf& type) {
        return (type.name.empty() ? names.at(type.base) : type.name) +
               std::string(static_cast<std::size_t>(type.pointers), '*');
    };
    std::ostringstream dump;
    for (const InterfaceInfo& type : handheld_.library->types) {
        for (const MemberInfo& member : type.members) {
            dump << "    " << member.slot << ": " << member.id << " " << kinds.at(member.kind) << " "
                 << member.name << " '" << member.help << "' (";
            for (const ParameterInfo& parameter : member.parameters) {
                dump << (&parameter == &member.parameters[0] ? "" : ", ") << directions.at(parameter.flags)
                     << name(parameter.type) << (parameter.name.empty() ? "" : " ") << parameter.name;
            }
            dump << ") " << name(member.result) << ", flags " << member.flags << "\n";
        }
    }
    std::ifstream lines(ZEL_EXPECTED "type_library.txt");
    std::string line, expected;
    while (std::getline(lines, line)) {
        if (line.find("('") != 0 && line.find(", flags ") != line.npos && line.find(": ") < 7)
            expected += line + "\n";
    }
    EXPECT_EQ(dump.str(), expected);
}

// Every property, by the library's description: what is put through the vtable in the platform's convention
// comes back through it and late-bound, and the other way round.
TEST_F(HandheldTest, EveryPropertyPassesInTheConventionAndByName) {
    const std::map<int, std::uint64_t> bits = {
        {kUI1, 0xA7}, {kUI2, 0xBEEF}, {kI4, 0x87654321}, {kR8, 0xFFF4000000000001}};
    const std::map<int, std::uint64_t> others = {
        {kUI1, 0x11}, {kUI2, 0x2222}, {kI4, 0x333}, {kR8, 0x4008000000000000}};
    int properties = 0, doubles = 0;
    for (const InterfaceInfo& type : handheld_.library->types) {
        if (type.kind == 5) continue;
        const Word object = NewObject(handheld_, type.name.substr(1));
        std::map<std::string, const MemberInfo*> getters;
        for (const MemberInfo& member : type.members) {
            if (member.kind == 2) getters[member.name] = &member;
            if (member.kind != 4 || member.parameters[0].type.base == kUserDefined) continue;
            const int base = member.parameters[0].type.base;
            const std::u16string name(member.name.begin(), member.name.end());
            Value got, nothing;
            if (base == kBstr) {
                const Word text = handheld_.NewString(u"t\u20acxt");
                EXPECT_EQ(machine_.Invoke(object, member.slot, text), kOk) << member.name;
                handheld_.FreeString(text);
                // A code's getter answers 1.
                EXPECT_LE(GetDirectly(object, *getters.at(member.name), got), kFalse);
                EXPECT_EQ(handheld_.StringOf(got.Low()), u"t\u20acxt") << member.name;
                handheld_.Clear(got);
                got = Get(object, name);
                EXPECT_EQ(handheld_.StringOf(got.Low()), u"t\u20acxt") << member.name;
                handheld_.Clear(got);
                ++properties;
                continue;
            }
            const std::uint64_t mask = base == kR8    ? ~0ull
                                       : base == kI4  ? 0xFFFFFFFF
                                       : base == kUI2 ? 0xFFFF
                                                      : 0xFF;
            const std::uint64_t put = bits.at(base), other = others.at(base);
            EXPECT_EQ(base == kR8 ? machine_.Invoke(object, member.slot, static_cast<Word>(put),
                                                    static_cast<Word>(put >> 32))
                                  : machine_.Invoke(object, member.slot, static_cast<Word>(put)),
                      kOk);
            EXPECT_EQ(GetDirectly(object, *getters.at(member.name), got), kOk);
            EXPECT_EQ(got.data & mask, put) << member.name;
            EXPECT_EQ(Get(object, name).data & mask, put) << member.name;
            EXPECT_EQ(
                handheld_.CallByName(object, name, 4, {{static_cast<std::uint16_t>(base), other}}, nothing),
                kOk);
            EXPECT_EQ(GetDirectly(object, *getters.at(member.name), got), kOk);
            EXPECT_EQ(got.data & mask, other) << member.name;
            ++properties;
            doubles += base == kR8;
        }
        handheld_.Release(object);
    }
    EXPECT_EQ(properties, 32);
    EXPECT_EQ(doubles, 3);
}

// A VARIANT takes three registers and a word of the stack, and what follows it the next one.
TEST_F(HandheldTest, VariantsPassThroughTheVtable) {
    constexpr int kItem = 7, kCount = 8, kNewEnum = 9, kAdd = 10, kRemove = 11, kCopy = 12;
    const Word items = NewObject(handheld_, "ZEL_Collection"), copy = NewObject(handheld_, "ZEL_Collection");
    Handheld::Scratch scratch(handheld_);
    const Word out = scratch.Take(16), count = scratch.Take(4);
    EXPECT_EQ(machine_.Invoke(items, kAdd, kR8, 0u, 0x00000001u, 0xFFF40000u), kOk);
    EXPECT_EQ(machine_.Invoke(items, kAdd, kI4, 0u, 7u, 0u), kOk);
    EXPECT_EQ(machine_.Invoke(items, kItem, kI4, 0u, 0u, 0u, out), kOk);
    EXPECT_EQ(handheld_.ReadValue(out).data, 0xFFF4000000000001u);
    EXPECT_EQ(machine_.Invoke(items, kItem, kUI4, 0u, 1u, 99u, out), kOk);
    EXPECT_EQ(handheld_.ReadValue(out).data & 0xFFFFFFFF, 7u);
    EXPECT_EQ(machine_.Invoke(copy, kCopy, items), kOk);
    EXPECT_EQ(machine_.Invoke(copy, kRemove, kI4, 0u, 0u, 0u), kOk);
    EXPECT_EQ(machine_.Invoke(copy, kCount, count), kOk);
    EXPECT_EQ(machine_.Read<Word>(count), 1u);
    EXPECT_EQ(machine_.Invoke(items, kCount, count), kOk);
    EXPECT_EQ(machine_.Read<Word>(count), 2u);

    EXPECT_EQ(machine_.Invoke(items, kNewEnum, out), kOk);
    Word walk = 0;
    const Word unknown = machine_.Read<Word>(out), values = scratch.Take(48), fetched = scratch.Take(4);
    EXPECT_EQ(handheld_.QueryInterface(unknown, kIEnumVariant, walk), kOk);
    EXPECT_EQ(machine_.Invoke(walk, 3, 3u, values, fetched), kFalse);
    EXPECT_EQ(machine_.Read<Word>(fetched), 2u);
    EXPECT_EQ(handheld_.ReadValue(values + 16).data & 0xFFFFFFFF, 7u);
    for (const Word object : {walk, unknown, copy, items}) handheld_.Release(object);
}

TEST_F(HandheldTest, RegistrationIsTheDesktopsEveryTime) {
    for (const char call : {'+', '+', '-', '-', '+', '-'}) {
        EXPECT_EQ(
            machine_.Call(handheld_.Export(call == '+' ? "DllRegisterServer" : "DllUnregisterServer"), {}),
            kOk);
        EXPECT_EQ(handheld_.registry.Dump(),
                  TextOf(call == '+' ? ZEL_EXPECTED "registered.txt" : ZEL_EXPECTED "unregistered.txt"));
    }
}

// Each run is a process of its own, as it was loaded.
TEST_F(HandheldTest, ProgramRegistersTheModuleBesideIt) {
    struct Case {
        const char16_t* line;
        Word code;
        const char *shown, *registry;
    };
    const Case cases[] = {{u"", 0, "The library is registered.\n", "registered.txt"},
                          {u"/u", 0, "The library is no longer registered.\n", "unregistered.txt"},
                          {u" /s \"\\Programme\\ZEL_BRU.dll\"", 0, "", "registered.txt"},
                          {u"/U /S \\Programme\\ZEL_BRU.dll", 0, "", "unregistered.txt"},
                          {u"\\elsewhere.dll", 3, "The library could not be loaded.\n", "unregistered.txt"}};
    RegistryTree registry;
    for (const Case& each : cases) {
        Handheld handheld(ZEL_MODULE);
        std::swap(handheld.registry, registry);
        EXPECT_EQ(handheld.RunProgram(ZEL_PROGRAM, each.line), each.code) << Utf8(each.line);
        EXPECT_EQ(handheld.shown, each.shown) << Utf8(each.line);
        EXPECT_EQ(handheld.registry.Dump(), TextOf(std::string(ZEL_EXPECTED) + each.registry))
            << Utf8(each.line);
        EXPECT_EQ(handheld.Unload(), "");
        std::swap(handheld.registry, registry);
    }
}

TEST_F(HandheldTest, ClassObjectsRefuseWhatTheyMust) {
    constexpr Word kClassNotAvailable = 0x80040111, kPointerExpected = 0x80004003;
    Handheld::Scratch scratch(handheld_);
    const Word out = scratch.Take(4),
               factoryIid = scratch.Bytes(Guid("00000001-0000-0000-C000-000000000046"));
    const Word unknown = scratch.Bytes(kIUnknown), dispatch = scratch.Bytes(kIDispatch);
    const Word clsid = scratch.Bytes(GuidOf(handheld_, "ZEL_Header"));
    const Word get = handheld_.Export("DllGetClassObject"), canGo = handheld_.Export("DllCanUnloadNow");
    EXPECT_EQ(machine_.Call(get, {dispatch, factoryIid, out}), kClassNotAvailable);
    EXPECT_EQ(machine_.Call(get, {clsid, factoryIid, 0}), kPointerExpected);
    EXPECT_EQ(machine_.Call(get, {clsid, dispatch, out}), kNoInterface);
    ASSERT_EQ(machine_.Call(get, {clsid, factoryIid, out}), kOk);
    const Word factory = machine_.Read<Word>(out);
    EXPECT_EQ(machine_.Invoke(factory, 3, factory, unknown, out), std::stoul(kNoAggregation, nullptr, 16));
    EXPECT_EQ(machine_.Invoke(factory, 4, 1u), kOk);
    EXPECT_EQ(machine_.Call(canGo, {}), kFalse);
    EXPECT_EQ(machine_.Invoke(factory, 4, 0u), kOk);
    EXPECT_EQ(machine_.Call(canGo, {}), kOk);
    EXPECT_EQ(handheld_.Release(factory), 0u);
}

TEST_F(HandheldTest, ControlPaints) {
    const Word store = NewObject(handheld_, "BRU_Store");
    Word view = 0;
    ASSERT_EQ(handheld_.QueryInterface(store, kIViewObject, view), kOk);
    Handheld::Scratch scratch(handheld_);
    const Word bounds = scratch.Take(16);
    for (const Word i : {0u, 1u, 2u, 3u}) machine_.Write<Word>(bounds + 4 * i, 10 * (i + 1));
    EXPECT_EQ(machine_.Invoke(view, 3, 1u, 0xFFFFFFFFu, 0u, 0u, 0u, 0x77u, bounds, 0u, 0u, 0u), kOk);
    EXPECT_EQ(handheld_.drawn,
              "SelectObject 0\nRectangle 10 20 30 40\nSelectObject 255\n"
              "DrawText 'ATL 3.0 : BRU_Store' 10 20 30 40 flags 37\n");
    handheld_.Release(view);
    handheld_.Release(store);
}

// Sizes of COM that lack them: the control says so. Where they are, they are called.
TEST_F(HandheldTest, ControlAsksForItsServicesWhenItNeedsThem) {
    constexpr int kEnumVerbs = 12, kGetUserType = 16, kAdvise = 19, kGetMiscStatus = 22;
    constexpr Word kNoVerbs = 0x80040180, kAdviseNotSupported = 0x80040003;
    const Word store = NewObject(handheld_, "BRU_Store");
    Word control = 0, data = 0;
    ASSERT_EQ(handheld_.QueryInterface(store, kIOleObject, control), kOk);
    ASSERT_EQ(handheld_.QueryInterface(store, Guid("0000010E-0000-0000-C000-000000000046"), data), kOk);
    Handheld::Scratch scratch(handheld_);
    const Word out = scratch.Take(4), format = scratch.Take(20);
    const auto answers = [&] {
        return std::vector<Word>{
            machine_.Invoke(control, kEnumVerbs, out), machine_.Invoke(control, kGetUserType, 1u, out),
            machine_.Invoke(control, kGetMiscStatus, 1u, out), machine_.Invoke(control, kAdvise, store, out)};
    };
    EXPECT_EQ(answers(),
              (std::vector<Word>{kNoVerbs, kNotImplemented, kNotImplemented, kAdviseNotSupported}));
    machine_.Write<std::uint16_t>(format, 3);
    machine_.Invoke(data, 9, format, 0u, store, out);  // DAdvise, likewise
    for (const char* name :
         {"OleRegEnumVerbs", "OleRegGetUserType", "OleRegGetMiscStatus", "CreateOleAdviseHolder"})
        handheld_.ole[name] = [] { return Word{kOutOfMemory}; };
    EXPECT_EQ(answers(), (std::vector<Word>{kNoVerbs, kOutOfMemory, kOutOfMemory, kOutOfMemory}));
    for (const Word object : {data, control, store}) handheld_.Release(object);
}

// Calls with the first allocation refused, or all from it on, then the second and so on, until none is. What
// answers 1 has done nothing; whatever happens, the objects are whole and no exception ends the process.
TEST_F(HandheldTest, MemoryMayGiveOutAtAnyAllocation) {
    const std::function<void(Word)> calls[] = {
        [&](Word store) { Save(store); }, [&](Word store) { Load(store); },
        [&](Word store) {
            Word another = 0;
            if (handheld_.Create(GuidOf(handheld_, "BRU_Store"), kIDispatch, another) == kOk)
                handheld_.Release(another);
            last_ = machine_.Call(handheld_.Export("DllRegisterServer"), {});
            static_cast<void>(store);
        },
        [&](Word store) {
            Value value;
            last_ = handheld_.CallByName(store, u"Header", 2, {}, value);
            if (last_ == kOk) handheld_.Clear(value);
        }};
    int refused = 0;
    const Word store = NewTree();
    Save(store);
    const std::string saved = handheld_.files.at(u"\\f");
    for (const bool onlyOne : {true, false}) {
        machine_.refusesOnlyOne = onlyOne;
        for (const auto& call : calls) {
            machine_.hasRefused = true;
            for (long granted = 0; machine_.hasRefused; ++granted) {
                ASSERT_LT(granted, 2000);
                handheld_.files[u"\\f"] = saved;
                machine_.hasRefused = false;
                machine_.allocationsLeft = granted;
                call(store);
                machine_.allocationsLeft = -1;
                refused += machine_.hasRefused;
                // A text that could not be had is saved as its default: that is no refusal.
                if (last_ == kFalse) {
                    ASSERT_TRUE(SameBytes(saved, handheld_.files.at(u"\\f"))) << granted;
                }
                handheld_.files[u"\\f"] = saved;
                ASSERT_EQ(Load(store), 0u);
                ASSERT_EQ(Save(store), 0u);
                ASSERT_TRUE(SameBytes(saved, handheld_.files.at(u"\\f"))) << granted;
            }
        }
    }
    EXPECT_LT(100, refused);
    handheld_.Release(store);
}

// While an exception of one thread is on its way, another thread throws and catches its own.
TEST_F(HandheldTest, ExceptionsOfSeveralThreadsAreOnTheirWayAtOnce) {
    const Word store = NewTree(), other = NewTree();
    Save(store);
    int crossed = 0;
    handheld_.beforeSystem = [&] {
        if (!machine_.hasRefused || machine_.thread != 0 || handheld_.HoldsLock()) return;
        machine_.thread = 1;
        machine_.allocationsLeft = 0;
        const Word before = last_;
        Load(other);
        EXPECT_EQ(last_, kFalse);
        last_ = before;
        machine_.allocationsLeft = 0;
        machine_.thread = 0;
        ++crossed;
    };
    for (const long granted : {0L, 1L, 3L, 6L}) {
        machine_.hasRefused = false;
        machine_.allocationsLeft = granted;
        Load(store);
        EXPECT_EQ(last_, kFalse) << granted;
    }
    EXPECT_LT(20, crossed);
    machine_.allocationsLeft = -1;
    handheld_.beforeSystem = nullptr;
    EXPECT_EQ(Load(store), 0u);
    machine_.thread = 1;
    EXPECT_EQ(handheld_.Enter(3), 1u);  // that thread ends
    machine_.thread = 0;
    handheld_.Release(other);
    handheld_.Release(store);
}

TEST_F(HandheldTest, FullDiskEndsNothing) {
    const Word store = NewTree();
    for (const long room : {0L, 100L, 1000L}) {
        handheld_.diskLeft = room;
        Save(store);
    }
    handheld_.diskLeft = -1;
    EXPECT_EQ(Save(store), 0u);
    EXPECT_TRUE(SameBytes(Hex(kTree), handheld_.files.at(u"\\f")));
    handheld_.Release(store);
}

// A chain of members far deeper than the stack: TearDown tells what of it was used.
TEST_F(HandheldTest, DepthCostsNoStack) {
    constexpr int kDepth = 12000;
    std::string bytes = Hex("07 'TRN4WIN' 00*3 40 10 01 00*2 00 05 00*89 00*5 01");
    for (int i = 0; i < kDepth; ++i) bytes += Hex("06 01 'A' 00*110 06 00 01");
    bytes.append(kDepth + 1, '\0');
    handheld_.files[u"\\f"] = bytes;
    const Word store = NewObject(handheld_, "BRU_Store");
    EXPECT_EQ(Load(store), 0u);
    EXPECT_EQ(Save(store), 0u);
    EXPECT_TRUE(handheld_.files.at(u"\\f") == bytes);
    EXPECT_EQ(handheld_.Release(store), 0u);
}

}  // namespace
}  // namespace zel
