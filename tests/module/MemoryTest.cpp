// What exhausted memory does to a client of the module: every allocation of a call fails once, by itself and
// with all that follow it.

#include <gtest/gtest.h>

#include <objidl.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <vector>

#include "zel/com/Bstr.h"
#include "zel/com/ComPtr.h"
#include "zel/com/Variant.h"
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
    const auto at = [base = reinterpret_cast<BYTE*>(module)](DWORD offset) { return base + offset; };
    const auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(module);
    const auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(at(static_cast<DWORD>(dos->e_lfanew)));
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    int hooked = 0;
    for (auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(at(imports)); library->Name; ++library) {
        const auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(at(library->OriginalFirstThunk));
        auto* place = reinterpret_cast<IMAGE_THUNK_DATA*>(at(library->FirstThunk));
        for (; name->u1.AddressOfData; ++name, ++place) {
            const auto* import =
                reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(at(static_cast<DWORD>(name->u1.AddressOfData)));
            const std::pair<std::string, void*> hooks[] = {
                {"malloc", reinterpret_cast<void*>(&ScarceMalloc)},
                {"calloc", reinterpret_cast<void*>(&ScarceCalloc)},
                {"realloc", reinterpret_cast<void*>(&ScarceRealloc)},
                {"free", reinterpret_cast<void*>(&CountedFree)}};
            for (const auto& [from, to] : hooks) {
                DWORD protection;
                if (from != reinterpret_cast<const char*>(import->Name)) continue;
                VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection);
                place->u1.Function = reinterpret_cast<ULONG_PTR>(to);
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

Variant Text(const OLECHAR* text) {
    Variant made;
    V_VT(made.InOut()) = VT_BSTR;
    V_BSTR(made.InOut()) = SysAllocString(text);
    return made;
}
const Variant kText = Text(kLong);

std::string BytesOf(const Bstr& file) {
    std::ifstream stream(std::filesystem::path(file.Get()), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class MemoryTest : public testing::Test {
public:
    MemoryTest() {
        static Spy spy;
        reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(L"oleaut32"), "SetOaNoCache"))();
        CoRegisterMallocSpy(&spy);
        Hook(GetModuleHandleW(L"ZEL_BRU.dll"));
        // The file: two definitions with a member each.
        const Client client(*this);
        client.store->put_DefinitionType(3);
        client.store->put_Flags(3);
        for (int i = 0; i < 2; ++i) {
            const auto definition = New<IZEL_Definition>(CLSID_ZEL_Definition);
            ComPtr<IZEL_Collection> members;
            definition->put_AreaCode(kCode.Get());
            definition->get_Members(members.Out());
            members->Add(Variant::Object(New<IZEL_Definition>(CLSID_ZEL_Definition).Get()).Get());
            client.items->Add(Variant::Object(definition.Get()).Get());
        }
        client.store->SaveToFile(kFile.Get(), nullptr);
    }
    ~MemoryTest() override {
        CoRevokeMallocSpy();
        for (const Bstr* file : {&kFile, &kTarget, &kCopy}) DeleteFileW(file->Get());
    }

    HRESULT Factory(const CLSID& clsid, IClassFactory** out) const {
        return server_.Call("DllGetClassObject", &clsid, &IID_IClassFactory, out);
    }
    template <class T>
    ComPtr<T> New(const CLSID& clsid) const {
        ComPtr<IClassFactory> factory;
        ComPtr<T> object;
        Factory(clsid, factory.Out());
        factory->CreateInstance(nullptr, __uuidof(T), object.OutVoid());
        return object;
    }

    // A store that differs from what it loaded, and a place for what a call gives.
    struct Client {
        explicit Client(const MemoryTest& from) : Client(from, from.New<IBRU_Store>(CLSID_BRU_Store)) {
            if (BytesOf(kFile).empty()) return;
            store->LoadFromFile(kFile.Get(), nullptr);
            store->put_DefinitionType(7);
            store->put_Flags(7);
            header->put_Type(7);
            Definition(0)->put_AreaCode(kOtherCode.Get());
            Definition(0)->put_AreaName(kOtherCode.Get());
            items->Add(kText.Get());
            numbers = test.New<IZEL_Collection>(CLSID_ZEL_Collection);
            for (LONG i = 0; i < 3; ++i) numbers->Add(Variant::Int(i).Get());
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
        void Remove(LONG position) const { items->Remove(Variant::Int(position).Get()); }

        // All that can be seen, as a save of another store writes it.
        std::string Visible() const {
            const Client other(test, test.New<IBRU_Store>(CLSID_BRU_Store));
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
        // That, what the store would publish again, the files and what a call gave.
        std::string State() const {
            std::string state = Visible() + BytesOf(kTarget) + '|';
            const VARIANT& given = out.Get();
            state += std::to_string(out.Type() == VT_BSTR ? SysStringLen(V_BSTR(&given)) : V_I4(&given));
            store->LoadFromFile(kMissing.Get(), nullptr);
            return state + Visible();
        }

        const MemoryTest& test;
        ComPtr<IBRU_Store> store;
        ComPtr<IZEL_Header> header;
        ComPtr<IZEL_Collection> items;
        ComPtr<IZEL_Collection> numbers;
        Variant out;
    };

    const Server server_;
};

using Client = MemoryTest::Client;
using Step = std::function<HRESULT(Client&)>;

struct Case {
    const char* name;
    Step call;
    HRESULT done = S_OK;
    // Answers that mean that nothing was done.
    std::vector<HRESULT> refusals = {S_FALSE};
    // What else it may come to: as if this had been called.
    std::vector<Step> lapses = {};
};

const Step kNothing = [](Client&) { return S_OK; };
Step AndRemove(const Step& call, std::vector<LONG> positions) {
    return [=](Client& client) {
        const HRESULT result = call(client);
        for (const LONG position : positions) client.Remove(position);
        return result;
    };
}

const Step kLoad = [](Client& c) { return c.store->LoadFromFile(kFile.Get(), nullptr); };

const Step kNoText = [](Client& client) {
    client.out = Text(nullptr);
    return S_OK;
};
Step Gives(LONG number) {
    return [=](Client& client) {
        client.out = Variant::Int(number);
        return S_OK;
    };
}
template <class Property>
Step GetText(Property get) {
    return [=](Client& client) {
        client.out = Text(nullptr);
        return (client.Definition(0).Get()->*get)(&V_BSTR(client.out.InOut()));
    };
}

// How many items there are to walk over.
HRESULT Walk(Client& client) {
    ComPtr<IUnknown> enumerator;
    const HRESULT result = client.items->get__NewEnum(enumerator.Out());
    const auto walk = enumerator.As<IEnumVARIANT>();
    LONG count = 0;
    while (walk && walk->Skip(1) == S_OK) ++count;
    if (walk) client.out = Variant::Int(count);
    return result;
}

// A new store: 1 for its header, 2 for its collection.
HRESULT Create(Client& client) {
    ComPtr<IClassFactory> factory;
    ComPtr<IBRU_Store> made;
    HRESULT result = client.test.Factory(CLSID_BRU_Store, factory.Out());
    if (SUCCEEDED(result)) result = factory->CreateInstance(nullptr, IID_IBRU_Store, made.OutVoid());
    if (FAILED(result)) return result;
    return Gives((made->get_Header(ComPtr<IZEL_Header>().Out()) == S_OK ? 1 : 0) +
                 (made->get_Definitions(ComPtr<IZEL_Collection>().Out()) == S_OK ? 2 : 0))(client);
}

// Calls with the given collection of numbers, which is made while there is memory.
template <class Put>
Step WithNumbers(Put put) {
    return [=](Client& client) { return put(client, client.numbers.Get()); };
}

const std::vector<Case> kCases = {
    {"LoadFromFile",
     kLoad,
     S_OK,
     {S_FALSE},
     {[](Client& c) { return c.store->LoadFromFile(kMissing.Get(), nullptr); }, AndRemove(kLoad, {0}),
      AndRemove(kLoad, {1}), AndRemove(kLoad, {1, 0})}},
    {"SaveToFile",
     [](Client& c) { return c.store->SaveToFile(kTarget.Get(), nullptr); },
     S_OK,
     {S_FALSE},
     {[](Client& c) { return c.store->SaveToFile(nullptr, nullptr); }}},
    {"put_Definitions",
     WithNumbers([](Client& c, IZEL_Collection* numbers) { return c.store->put_Definitions(numbers); }),
     S_OK,
     {},
     {kNothing}},
    {"Add", [](Client& c) { return c.items->Add(kText.Get()); }, S_OK, {S_FALSE}, {[](Client& c) {
         return c.items->Add(Variant().Get());
     }}},
    {"Item",
     [](Client& c) { return c.items->Item(Variant::Int(2).Get(), c.out.Out()); },
     S_OK,
     {},
     {kNothing}},
    {"NewEnum", &Walk, S_OK, {S_FALSE}, {Gives(0)}},
    {"Copy", WithNumbers([](Client& c, IZEL_Collection* numbers) { return c.items->Copy(numbers); })},
    {"put_Members",
     WithNumbers([](Client& c, IZEL_Collection* numbers) { return c.Definition(0)->put_Members(numbers); }),
     S_OK,
     {},
     {kNothing}},
    {"put_AreaCode", [](Client& c) { return c.Definition(0)->put_AreaCode(kCode.Get()); }},
    {"get_AreaCode",
     GetText(&IZEL_Definition::get_AreaCode),
     S_FALSE,
     {},
     {kNoText, [](Client& c) { return kNoText(c), E_OUTOFMEMORY; },
      // Wine frees a string before it has the next, and says that all is well.
      [](Client& c) { return kNoText(c), S_FALSE; }}},
    {"get_AreaName", GetText(&IZEL_Definition::get_AreaName), S_OK, {}, {kNoText}},
    {"CreateInstance", &Create, S_OK, {E_OUTOFMEMORY}, {Gives(0), Gives(1), Gives(2)}},
};

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
        EXPECT_EQ(allowed.front().first, GetParam().done);
        for (const HRESULT refusal : GetParam().refusals)
            allowed.emplace_back(refusal, Outcome(kNothing, -1).second);
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
    ExpectPromisesKept();
    EXPECT_EQ(liveBlocks, before);
}

INSTANTIATE_TEST_SUITE_P(Calls, MemoryOf, testing::ValuesIn(kCases),
                         [](const auto& tried) { return std::string(tried.param.name); });

}  // namespace
}  // namespace zel
