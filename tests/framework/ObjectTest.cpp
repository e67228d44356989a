#include "zel/com/Object.h"

#include <gtest/gtest.h>

#include "zel/com/EnumVariant.h"
#include "zel/com/Variant.h"

namespace zel {
namespace {

struct Probe final : Object<Interfaces<IUnknown>, IUnknown> {
    // An object may be handed around while it is destroyed.
    ~Probe() override {
        AddRef();
        Release();
    }
};

TEST(Object, LivesAndKeepsTheModuleUntilItsLastRelease) {
    auto probe = Make<Probe>();
    auto other = probe.As<IUnknown>();
    EXPECT_EQ(probe->AddRef(), 3u);
    EXPECT_EQ(other->Release(), 2u);
    probe.Reset();
    EXPECT_EQ(Module::LockCount(), 1);
    other.Reset();
    EXPECT_EQ(Module::LockCount(), 0);
}

ComPtr<EnumVariant> Numbers(LONG count) {
    std::vector<VARIANT> numbers;
    for (LONG i = 0; i < count; ++i) numbers.push_back(Variant::Int(i).Detach());
    auto walk = Make<EnumVariant>();
    EXPECT_EQ(walk->Init(numbers.data(), count), S_OK);
    return walk;
}

// The next element, or -1.
LONG NextOf(IEnumVARIANT& walk) {
    Variant item;
    return walk.Next(1, item.Out(), nullptr) == S_OK ? V_I4(&item.Get()) : -1;
}

TEST(EnumVariant, GivesWhatIsLeftAndSaysWhenThatIsLess) {
    auto walk = Numbers(5);
    VARIANT items[4];
    ULONG fetched = 0;
    EXPECT_EQ(walk->Next(3, items, &fetched), S_OK);
    EXPECT_TRUE(fetched == 3 && V_I4(&items[2]) == 2);
    EXPECT_EQ(walk->Next(4, items, &fetched), S_FALSE);
    EXPECT_TRUE(fetched == 2 && V_I4(&items[1]) == 4);
    EXPECT_EQ(walk->Next(1, items, nullptr), S_FALSE);
    for (const ULONG count : {0, 2}) EXPECT_EQ(walk->Next(count, items, nullptr), E_POINTER);
    EXPECT_EQ(walk->Next(1, nullptr, &fetched), E_POINTER);
    EXPECT_EQ(fetched, 0u);
    EXPECT_EQ(walk->Clone(nullptr), E_POINTER);
}

TEST(EnumVariant, SkipResetAndCloneMoveEachOnTheirOwn) {
    auto walk = Numbers(3);
    EXPECT_EQ(walk->Skip(2), S_OK);
    ComPtr<IEnumVARIANT> clone;
    ASSERT_EQ(walk->Clone(clone.Out()), S_OK);
    EXPECT_EQ(walk->Skip(2), S_FALSE);
    EXPECT_EQ(NextOf(*clone), 2);
    EXPECT_EQ(walk->Reset(), S_OK);
    EXPECT_EQ(NextOf(*walk), 0);
    EXPECT_EQ(NextOf(*clone), -1);
}

TEST(EnumVariant, HoldsItsObjectsAndNoneWhenOneCannotBeCopied) {
    auto probe = Make<Probe>();
    auto walk = Make<EnumVariant>();
    VARIANT items[2];
    V_VT(&items[0]) = VT_UNKNOWN;
    V_UNKNOWN(&items[0]) = probe.Get();
    V_VT(&items[1]) = VT_BSTR | VT_VECTOR;
    EXPECT_EQ(walk->Init(items, 1), S_OK);
    ComPtr<IEnumVARIANT> clone;
    ASSERT_EQ(walk->Clone(clone.Out()), S_OK);
    EXPECT_EQ(walk->Init(items, 2), DISP_E_BADVARTYPE);
    EXPECT_EQ(walk->Skip(1), S_FALSE);
    EXPECT_EQ(probe->AddRef(), 3u);  // the clone's, this one and the test's
    EXPECT_EQ(clone->Next(1, &items[1], nullptr), S_OK);
    clone.Reset();
    EXPECT_EQ(V_UNKNOWN(&items[1])->Release(), 2u);
    EXPECT_EQ(probe->Release(), 1u);
}

}  // namespace
}  // namespace zel
