// What exhausted memory does to a client of the module: every allocation of a call fails once, by itself and
// with all that follow it.

#include <gtest/gtest.h>

#include <objidl.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

#include "zel/com/Bstr.h"
#include "zel/com/ComPtr.h"
#include "zel/com/Variant.h"
#include "LateBound.h"
#include "format/HexDump.h"
#include "Server.h"

namespace zel {
namespace {

long left = -1;  // until one is refused; none is while negative
bool alone = false;
bool reached = false;
long liveBlocks = 0;

bool Refuses() {
    if (left != 0) return left -= left > 0, false;
    reached = true;
    if (alone) left = -1;
    return true;
}

void* Counted(void* block) {
    liveBlocks += block != nullptr;
    return block;
}
void* ScarceMalloc(std::size_t size) { return Refuses() ? nullptr : Counted(std::malloc(size)); }
void* ScarceCalloc(std::size_t count, std::size_t size) {
    return Refuses() ? nullptr : Counted(std::calloc(count, size));
}
void* ScarceRealloc(void* block, std::size_t size) { return Refuses() ? nullptr : std::realloc(block, size); }
void CountedFree(void* block) {
    liveBlocks -= block != nullptr;
    std::free(block);
}

// The allocator that the module imports becomes the one above.
void Hook(HMODULE module) {
    const std::pair<const char*, void*> hooks[] = {{"malloc", reinterpret_cast<void*>(&ScarceMalloc)},
                                                   {"calloc", reinterpret_cast<void*>(&ScarceCalloc)},
                                                   {"realloc", reinterpret_cast<void*>(&ScarceRealloc)},
                                                   {"free", reinterpret_cast<void*>(&CountedFree)}};
    auto* base = reinterpret_cast<BYTE*>(module);
    const auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    int hooked = 0;
    for (auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports); library->Name;
         ++library) {
        for (auto** place = reinterpret_cast<void**>(base + library->FirstThunk); *place; ++place) {
            for (const auto& [name, to] : hooks) {
                if (*place != reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"msvcrt"), name)))
                    continue;
                DWORD protection;
                VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection);
                *place = to;
                ++hooked;
            }
        }
    }
    EXPECT_EQ(hooked, 4);
}

// The platform's allocator, from which automation strings come.
struct Spy final : IMallocSpy {
    STDMETHODIMP QueryInterface(REFIID, void** out) override { return *out = this, S_OK; }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return Refuses() ? 0 : size; }
    STDMETHODIMP_(void*) PostAlloc(void* block) override { return Counted(block); }
    STDMETHODIMP_(void*) PreFree(void* block, BOOL) override {
        liveBlocks -= block != nullptr;
        return block;
    }
    STDMETHODIMP_(void) PostFree(BOOL) override {}
    STDMETHODIMP_(SIZE_T) PreRealloc(void* block, SIZE_T size, void** out, BOOL) override {
        *out = block;
        return Refuses() ? 0 : size;
    }
    STDMETHODIMP_(void*) PostRealloc(void* block, BOOL) override { return block; }
    STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
    STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
    STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
    STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int result) override { return result; }
    STDMETHODIMP_(void) PreHeapMinimize() override {}
    STDMETHODIMP_(void) PostHeapMinimize() override {}
};

const wchar_t kLong[] = L"a text that is longer than a string holds in place";
const Bstr kFile(L"memory_file.tmp"), kTarget(L"memory_target.tmp"), kCopy(L"memory_copy.tmp"),
    kMissing(L"no such file"), kCode(kLong), kOtherCode(L"another text that a string does not hold");

_variant_t kText(kLong);

std::string BytesOf(const Bstr& file) {
    std::ifstream stream(std::filesystem::path(file.Get()), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class MemoryTest : public testing::Test {
public:
    MemoryTest() {
        // What throws takes a thread slot and gives it back when it goes; others may keep one or two.
        const DWORD slot = TlsAlloc();
        TlsFree(slot);
        static const DWORD first = slot;
        EXPECT_LT(slot, first + 4);
        static Spy spy;
        reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(L"oleaut32"), "SetOaNoCache"))();
        CoRegisterMallocSpy(&spy);
        Hook(GetModuleHandleW(BuiltFile("ZEL_BRU.dll").c_str()));
        std::ofstream(std::filesystem::path(kFile.Get()), std::ios::binary)
            << Hex("07 'TRN4WIN' 00*3 40 10 01 00*2 00 05 00*89 03 03 00*3 01"
                   "(06 23 'a text that takes memory of its own' 00*110 06 00 01 06 00*113 01 00*2)*2 00");
    }
    ~MemoryTest() override {
        CoRevokeMallocSpy();
        for (const Bstr* file : {&kFile, &kTarget, &kCopy}) DeleteFileW(file->Get());
    }

    static HRESULT Factory(const Server& server, const CLSID& clsid, IClassFactory** out) {
        return server.Call("DllGetClassObject", &clsid, &IID_IClassFactory, out);
    }
    template <class T>
    static ComPtr<T> New(const Server& server, const CLSID& clsid) {
        ComPtr<IClassFactory> factory;
        ComPtr<T> object;
        Factory(server, clsid, factory.Out());
        factory->CreateInstance(nullptr, __uuidof(T), object.OutVoid());
        return object;
    }

    // A store that differs from what it loaded, and a place for what a call gives.
    struct Client {
        explicit Client(const MemoryTest& from)
            : Client(from, New<IBRU_Store>(from.server_, CLSID_BRU_Store)) {
            store->LoadFromFile(kFile.Get(), nullptr);
            store->put_DefinitionType(7);
            store->put_Flags(7);
            header->put_Type(7);
            Definition(0)->put_AreaCode(kOtherCode.Get());
            Definition(0)->put_AreaName(kOtherCode.Get());
            items->Add(kText);
            items->Add(Variant::Object(foreignDefinition.Get()).Get());
            for (LONG i = 0; i < 3; ++i) numbers->Add(Variant::Int(i).Get());
            ComPtr<IUnknown> enumerator;
            items->get__NewEnum(enumerator.Out());
            walk = enumerator.As<IEnumVARIANT>();
            // Without texts: one that a getter could not get is empty under Wine.
            foreignHeader->put_Signature(nullptr);
            foreignHeader->put_FileVersion(4);
            foreignDefinition->put_Hidden(9);
        }
        Client(const MemoryTest& from, ComPtr<IBRU_Store> made) : test(from), store(std::move(made)) {
            store->get_Header(header.Out());
            store->get_Definitions(items.Out());
        }
        ComPtr<IZEL_Definition> Definition(LONG position) const {
            Variant item;
            items->Item(Variant::Int(position).Get(), item.Out());
            return ComPtr<IDispatch>(V_DISPATCH(&item.Get())).As<IZEL_Definition>();
        }
        HRESULT Remove(LONG position) const { return items->Remove(Variant::Int(position).Get()); }

        // All that can be seen, as a save of another store writes it.
        std::string Visible() const {
            const Client other(test, New<IBRU_Store>(test.server_, CLSID_BRU_Store));
            LONG count = 0;
            unsigned char type = 0;
            LONG flags = 0;
            other.store->put_Header(header.Get());
            items->get_Count(&count);
            std::string texts;
            for (LONG i = 0; i < count; ++i) {
                Variant item;
                items->Item(Variant::Int(i).Get(), item.Out());
                other.items->Add(item.Get());
                texts += std::to_string(item.Type()) + (item.Type() == VT_BSTR ? "text " : " ");
            }
            store->get_DefinitionType(&type);
            store->get_Flags(&flags);
            other.store->put_DefinitionType(type);
            other.store->put_Flags(flags);
            other.store->SaveToFile(kCopy.Get(), nullptr);
            return BytesOf(kCopy) + texts;
        }
        // That, what the store would publish again, the files, what a call gave and what is left to walk
        // over.
        std::string State() const {
            std::string state = Visible() + BytesOf(kTarget) + '|';
            const VARIANT& given = out.Get();
            state += std::to_string(out.Type() == VT_BSTR ? SysStringLen(V_BSTR(&given)) : V_I4(&given));
            while (walk->Skip(1) == S_OK) state += '.';
            store->LoadFromFile(kMissing.Get(), nullptr);
            return state + Visible();
        }

        const MemoryTest& test;
        ComPtr<IBRU_Store> store;
        ComPtr<IZEL_Header> header;
        ComPtr<IZEL_Collection> items;
        ComPtr<IZEL_Collection> numbers = New<IZEL_Collection>(test.server_, CLSID_ZEL_Collection);
        ComPtr<IEnumVARIANT> walk;
        ComPtr<IZEL_Header> foreignHeader = New<IZEL_Header>(test.foreign_, CLSID_ZEL_Header);
        ComPtr<IZEL_Definition> foreignDefinition = New<IZEL_Definition>(test.foreign_, CLSID_ZEL_Definition);
        Variant out = Variant::Object(nullptr);
    };

    const Server server_;
    // The same module from another file: its objects are a client's own to the first.
    const Server foreign_{BuiltFile("tests/module/" ZEL_ODD_FOLDER "/ZEL_BRU.dll")};
};

TEST_F(MemoryTest, ForeignObjectsAreSavedAsOwnOnes) {
    const std::string bytes = Hex(
        "07 'SIGNING' 00*3 41 10 01 34 12 c8 05 01 00*3 02 00*3 'ME' 00*8 03 00*3 04 00*3 'YOU' 00*7 02 'PV' "
        "00*8 "
        "02 'CV' 00*18 02 'MV' 00*18 08 04 03 02 01 01 06 01 'A' 00*6 e8 3f ff 02 'AN' 00*18 02 'AD' 00*18 "
        "00*6 e0 bf 00*6 04 40 02 'SS' 00*30 01 00 02 00 03 00 04 05 06 07 06 01 'P' 01 00 00");
    std::ofstream(std::filesystem::path(kFile.Get()), std::ios::binary) << bytes;
    const Client own(*this, New<IBRU_Store>(server_, CLSID_BRU_Store));
    const Client foreign(*this, New<IBRU_Store>(foreign_, CLSID_BRU_Store));
    foreign.store->LoadFromFile(kFile.Get(), nullptr);
    own.store->put_DefinitionType(8);
    own.store->put_Flags(0x1020304);
    own.store->put_Header(foreign.header.Get());
    own.items->Add(Variant::Object(foreign.Definition(0).Get()).Get());
    own.store->SaveToFile(kTarget.Get(), nullptr);
    EXPECT_TRUE(SameBytes(bytes, BytesOf(kTarget)));
}

using Client = MemoryTest::Client;
using Step = std::function<HRESULT(Client&)>;

struct Case {
    const char* name;
    Step call;
    // Answers that mean that nothing was done.
    std::vector<HRESULT> refusals;
    // What else it may come to: as if this had been called.
    std::vector<Step> lapses = {};
};

HRESULT Nothing(Client&) { return S_OK; }
HRESULT Load(Client& c) { return c.store->LoadFromFile(kFile.Get(), nullptr); }
HRESULT NoText(Client& c) { return V_VT(c.out.InOut()) = VT_BSTR, S_OK; }
HRESULT AddEmpty(Client& c) { return c.items->Add(Variant().Get()); }
HRESULT Gives(Client& c, LONG number) { return c.out = Variant::Int(number), S_OK; }

HRESULT NewEnum(Client& client) {
    ComPtr<IUnknown> enumerator;
    const HRESULT result = client.items->get__NewEnum(enumerator.Out());
    if (enumerator) client.walk = enumerator.As<IEnumVARIANT>();
    return result;
}
HRESULT Next(Client& client) {
    VARIANT items[3];
    ULONG fetched = 0;
    const HRESULT result = client.walk->Next(3, items, &fetched);
    for (ULONG i = 0; i < fetched; ++i) VariantClear(&items[i]);
    return result;
}

// A new store: 1 for its header, 2 for its collection.
HRESULT Create(Client& client) {
    ComPtr<IClassFactory> factory;
    ComPtr<IBRU_Store> made;
    HRESULT result = MemoryTest::Factory(client.test.server_, CLSID_BRU_Store, factory.Out());
    if (SUCCEEDED(result)) result = factory->CreateInstance(nullptr, IID_IBRU_Store, made.OutVoid());
    if (FAILED(result)) return result;
    const LONG header = made->get_Header(ComPtr<IZEL_Header>().Out()) == S_OK ? 1 : 0;
    return Gives(client, header + (made->get_Definitions(ComPtr<IZEL_Collection>().Out()) == S_OK ? 2 : 0));
}

// clang-format off
const std::vector<Case> kCases = {
    {"LoadFromFile", &Load, {S_FALSE},
     {[](Client& c) { return c.store->LoadFromFile(kMissing.Get(), nullptr); },
      [](Client& c) { return Load(c), c.Remove(0); },
      [](Client& c) { return Load(c), c.Remove(1); },
      [](Client& c) { return Load(c), c.Remove(1), c.Remove(0); }}},
    {"SaveToFile", [](Client& c) { return c.store->SaveToFile(kTarget.Get(), nullptr); }, {S_FALSE},
     {[](Client& c) { return c.store->SaveToFile(nullptr, nullptr); }}},
    {"put_Header", [](Client& c) { return c.store->put_Header(c.foreignHeader.Get()); }, {}},
    {"put_Definitions", [](Client& c) { return c.store->put_Definitions(c.numbers.Get()); }, {}, {&Nothing}},
    {"Add", [](Client& c) { return c.items->Add(kText); }, {S_FALSE}, {&AddEmpty}},
    {"AddByName", [](Client& c) { return Call(*c.items, L"Add", DISPATCH_METHOD, &kText, nullptr); },
     {E_OUTOFMEMORY}, {&AddEmpty, &Nothing}},
    {"Item", [](Client& c) { return c.items->Item(Variant::Int(2).Get(), c.out.Out()); }, {}, {&Nothing}},
    {"NewEnum", &NewEnum, {S_FALSE}, {[](Client& c) { return c.walk->Skip(9), S_OK; }}},
    {"Next", &Next, {E_OUTOFMEMORY}},
    {"Clone", [](Client& c) { return c.walk->Clone(ComPtr<IEnumVARIANT>().Out()); }, {E_OUTOFMEMORY}},
    {"Copy", [](Client& c) { return c.items->Copy(c.numbers.Get()); }, {S_FALSE}},
    {"put_Members", [](Client& c) { return c.Definition(0)->put_Members(c.numbers.Get()); }, {}, {&Nothing}},
    {"put_AreaCode", [](Client& c) { return c.Definition(0)->put_AreaCode(kCode.Get()); }, {S_FALSE}},
    {"put_AreaCodeByName",
     [](Client& c) { return Call(*c.Definition(0), L"AreaCode", DISPATCH_PROPERTYPUT, &kText, nullptr); },
     {}, {&Nothing}},
    {"get_AreaCode",
     [](Client& c) { return NoText(c), c.Definition(0)->get_AreaCode(&V_BSTR(c.out.InOut())); },
     // Wine frees a string before it has the next, and says that all is well.
     {}, {&NoText, [](Client& c) { return NoText(c), E_OUTOFMEMORY; }, [](Client& c) { return NoText(c), S_FALSE; }}},
    {"get_AreaCodeByName",
     [](Client& c) { return Call(*c.Definition(0), L"AreaCode", DISPATCH_PROPERTYGET, nullptr, c.out.Out()); },
     {DISP_E_EXCEPTION}, {&NoText}},
    {"get_AreaName",
     [](Client& c) { return NoText(c), c.Definition(0)->get_AreaName(&V_BSTR(c.out.InOut())); }, {}, {&NoText}},
    {"CreateInstance", &Create, {E_OUTOFMEMORY},
     {[](Client& c) { return Gives(c, 0); }, [](Client& c) { return Gives(c, 1); },
      [](Client& c) { return Gives(c, 2); }}},
};
// clang-format on

class MemoryOf : public MemoryTest, public testing::WithParamInterface<Case> {
protected:
    // What the call answers, and the state behind it.
    std::pair<HRESULT, std::string> Outcome(const Step& call, long granted) const {
        std::ofstream(std::filesystem::path(kTarget.Get())) << "untouched";
        Client client(*this);
        left = granted;
        reached = false;
        const HRESULT result = call(client);
        left = -1;
        return {result, client.State()};
    }
    void ExpectPromisesKept() const {
        std::vector<std::pair<HRESULT, std::string>> allowed = {Outcome(GetParam().call, -1)};
        EXPECT_TRUE(SUCCEEDED(allowed.front().first));
        for (const HRESULT refusal : GetParam().refusals)
            allowed.emplace_back(refusal, Outcome(&Nothing, -1).second);
        for (const Step& lapse : GetParam().lapses) allowed.push_back(Outcome(lapse, -1));
        for (const bool byItself : {true, false}) {
            alone = byItself;
            long granted = 0;
            do {
                const auto found = Outcome(GetParam().call, granted);
                EXPECT_TRUE(std::find(allowed.begin(), allowed.end(), found) != allowed.end())
                    << (alone ? "only allocation " : "from allocation ") << granted << " on, answered "
                    << found.first;
            } while (reached && ++granted);
            EXPECT_GT(granted, 0);
        }
    }
};

TEST_P(MemoryOf, KeepsItsPromisesAtEveryAllocation) {
    ExpectPromisesKept();  // also sets aside what stays for the next exception
    const long before = liveBlocks;
    std::thread([this] { ExpectPromisesKept(); }).join();  // what the thread's exceptions need goes with it
    EXPECT_EQ(liveBlocks, before);
}

INSTANTIATE_TEST_SUITE_P(Calls, MemoryOf, testing::ValuesIn(kCases),
                         [](const auto& tried) { return std::string(tried.param.name); });

}  // namespace
}  // namespace zel
