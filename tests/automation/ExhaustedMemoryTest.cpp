// The objects with an allocator that gives out: linked into the test, since the module's own allocator is out
// of reach.
#include <cstdlib>
#include <new>

#include "BRU_Store.h"
#include "Client.h"
#include "ZEL_Definition.h"

namespace {

long allocationsLeft = -1;  // until the one that fails; negative for never
long allocationsAlive = 0;

}  // namespace

void* operator new(std::size_t size) {
    if (allocationsLeft == 0) throw std::bad_alloc();
    if (allocationsLeft > 0) --allocationsLeft;
    ++allocationsAlive;
    return std::malloc(size ? size : 1);
}
void operator delete(void* memory) noexcept {
    if (memory) --allocationsAlive;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace zel {
namespace {

StorePtr NewStore() {
    StorePtr store;
    CreateInstance<BRU_Store>(__uuidof(IBRU_Store), reinterpret_cast<void**>(&store));
    return store;
}

// Two definitions, the first with a member, with codes too long for a string's own room.
void Fill(IZEL_Collection* items) {
    const wchar_t* const codes[] = {L"a code of some length 1", L"a code of some length 2"};
    for (const wchar_t* code : codes) {
        const ComPtr<ZEL_Definition> definition = Make<ZEL_Definition>(), member = Make<ZEL_Definition>();
        definition->put_AreaCode(Text(code));
        member->put_AreaCode(Text(L"the code of a member"));
        definition->Members().Add(ObjectIn(member.Get()));
        items->Add(ObjectIn(definition.Get()));
    }
}

// Calls with the k-th allocation from there on failing, for every k until none fails. A call that answers 1
// must have left the objects as they were.
template <class Call>
void FailEachAllocation(Call call) {
    const StorePtr store = NewStore();
    Fill(Definitions(store));
    const std::wstring before = Tree(Definitions(store));
    LONG refused = 0;
    for (long k = 0;; ++k) {
        allocationsLeft = k;
        const HRESULT result = call(store.GetInterfacePtr());
        const bool reached = allocationsLeft == 0;
        allocationsLeft = -1;
        if (!reached) break;
        if (result == S_OK) continue;
        ++refused;
        EXPECT_EQ(S_FALSE, result) << "allocation " << k;
        EXPECT_EQ(before, Tree(Definitions(store))) << "allocation " << k;
    }
    EXPECT_LT(0, refused);
}

TEST(ExhaustedMemory, LeavesObjectsAndNothingElseBehind) {
    const long alive = allocationsAlive;
    {
        const TemporaryFile file;
        LONG result;
        {
            const StorePtr store = NewStore();
            Fill(Definitions(store));
            ASSERT_EQ(S_OK, store->SaveToFile(file, &result));
        }
        FailEachAllocation([&](IBRU_Store* store) { return store->SaveToFile(file, &result); });
        FailEachAllocation([&](IBRU_Store* store) {
            const HRESULT answer = store->LoadFromFile(file, &result);
            // A load may go on without a definition that it has no room for; the next one finds it again.
            if (answer == S_OK) {
                allocationsLeft = -1;
                store->LoadFromFile(file, &result);
            }
            return answer;
        });
        FailEachAllocation([](IBRU_Store* store) {
            IUnknown* enumerator = nullptr;
            const HRESULT answer = Definitions(store)->get__NewEnum(&enumerator);
            if (enumerator) enumerator->Release();
            return answer;
        });
    }
    EXPECT_EQ(alive, allocationsAlive);
    EXPECT_EQ(0, Module::LockCount());
}

}  // namespace
}  // namespace zel
