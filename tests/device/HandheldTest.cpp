#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>

#include <gtest/gtest.h>

#include "zel/emulator/Client.h"
#include "format/HexDump.h"

namespace zel {
namespace {

std::string TextOf(const std::string& file) {
    std::string text{std::istreambuf_iterator<char>(std::ifstream(file).rdbuf()), {}};
    for (std::size_t at; (at = text.find("FOLDER")) != text.npos;)
        text.replace(at, 6, Utf8(Handheld::kFolder));
    return text;
}

// The module on a handheld; after each test it must go and leave nothing, having used little of its stack.
class HandheldTest : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(handheld_.Unload(), "");
        EXPECT_LE(machine_.StackUsed(), 8192u);
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
        handheld_.files[u"\\f"] = kTree;
        EXPECT_EQ(Load(store), 0u);
        return store;
    }

    const std::string kTree =
        Hex("07 'TRN4WIN' 00*3 40 10 01 00*2 00 05 00*89 00*5 01 06 15 'a code of some length' 00*110 06 00 "
            "01 06 17 'a long code of a member' 00*110 06 00 01 00*3");
    static constexpr int kLoadSlot = 11, kSaveSlot = 12;
    Handheld handheld_{ZEL_MODULE};
    Machine& machine_ = handheld_.machine;
    Word last_ = 0;
};

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

// Every number, by the library's description: it passes through the vtable in the platform's convention.
TEST_F(HandheldTest, EveryNumberPassesThroughTheVtable) {
    const std::map<int, std::pair<std::uint64_t, Word>> numbers = {
        {kUI1, {0xA7, 1}}, {kUI2, {0xBEEF, 2}}, {kI4, {0x87654321, 4}}, {kR8, {0xFFF4000000000001, 8}}};
    Handheld::Scratch scratch(handheld_);
    const Word place = scratch.Take(16) + 4;  // a client's double may lie at a multiple of 4
    int properties = 0;
    for (const InterfaceInfo& type : handheld_.library->types) {
        const Word object = type.kind == 5 ? 0 : NewObject(handheld_, type.name.substr(1));
        for (const MemberInfo& member : type.members) {
            const auto found = numbers.find(member.kind == 4 ? member.parameters[0].type.base : int{kEmpty});
            if (found == numbers.end()) continue;
            const auto [number, size] = found->second;
            const Word low = static_cast<Word>(number), high = static_cast<Word>(number >> 32);
            EXPECT_EQ(size == 8 ? machine_.Invoke(object, member.slot, low, high)
                                : machine_.Invoke(object, member.slot, low),
                      kOk);
            machine_.Write<std::uint64_t>(place, 0);
            EXPECT_EQ(machine_.Invoke(object, member.slot - 1, place), kOk);  // its getter
            EXPECT_EQ(machine_.Read<Word>(place), low) << member.name;
            EXPECT_EQ(machine_.Read<Word>(place + 4), high) << member.name;
            ++properties;
        }
        if (object) handheld_.Release(object);
    }
    EXPECT_EQ(properties, 21);
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
                          {u"", 5, "The registration failed.\n", "unregistered.txt"},
                          {u"\\elsewhere.dll", 3, "The library could not be loaded.\n", "unregistered.txt"}};
    RegistryTree registry;
    for (const Case& each : cases) {
        Handheld handheld(ZEL_MODULE);
        std::swap(handheld.registry, registry);
        handheld.machine.allocationsLeft = each.code == 5 ? 0 : -1;
        EXPECT_EQ(handheld.RunProgram(ZEL_PROGRAM, each.line), each.code) << Utf8(each.line);
        EXPECT_EQ(handheld.shown, each.shown) << Utf8(each.line);
        EXPECT_EQ(handheld.registry.Dump(), TextOf(std::string(ZEL_EXPECTED) + each.registry))
            << Utf8(each.line);
        EXPECT_EQ(handheld.Unload(), "");
        std::swap(handheld.registry, registry);
    }
}

TEST_F(HandheldTest, ControlPaints) {
    const Word store = NewObject(handheld_, "BRU_Store");
    Word view = 0;
    ASSERT_EQ(handheld_.QueryInterface(store, SystemIid(0x10D), view), kOk);
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
    ASSERT_EQ(handheld_.QueryInterface(store, SystemIid(0x112), control), kOk);
    ASSERT_EQ(handheld_.QueryInterface(store, SystemIid(0x10E), data), kOk);
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
            if (handheld_.Create(GuidOf(handheld_, "BRU_Store"), SystemIid(0x20400), another) == kOk)
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
    // More threads come and go while there is no memory than the reserve has room for.
    machine_.thread = 1;
    for (int threads = 0; threads < 9; ++threads) {
        machine_.allocationsLeft = 0;
        Load(store);
        EXPECT_EQ(last_, kFalse);
        machine_.allocationsLeft = -1;
        EXPECT_EQ(handheld_.Enter(3), 1u);
    }
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
    handheld_.files[u"\\f"] = kTree + "of a longer file";
    EXPECT_EQ(Save(store), 0u);
    EXPECT_TRUE(SameBytes(kTree, handheld_.files.at(u"\\f")));
    handheld_.Release(store);
}

}  // namespace
}  // namespace zel
