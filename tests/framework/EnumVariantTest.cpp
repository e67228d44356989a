#include <gtest/gtest.h>

#include "EnumVariant.h"
#include "ProbeObject.h"
#include "Variant.h"

namespace zel {
namespace {

class EnumVariantTest : public testing::Test {
protected:
    ComPtr<EnumVariant> Numbers(ULONG count) {
        std::vector<VARIANT> numbers;
        for (ULONG i = 0; i < count; ++i) numbers.push_back(Variant::Int(i).Detach());
        auto made = Make<EnumVariant>();
        EXPECT_EQ(made->Init(numbers.data(), count), S_OK);
        return made;
    }
    // The next element, or -1.
    LONG NextOf(IEnumVARIANT& walk) {
        Variant item;
        return walk.Next(1, item.Out(), nullptr) == S_OK ? V_I4(&item.Get()) : -1;
    }
};

TEST_F(EnumVariantTest, GivesWhatIsLeftAndSaysWhenThatIsLess) {
    auto walk = Numbers(5);
    VARIANT items[4];
    ULONG fetched = 0;
    EXPECT_EQ(walk->Next(3, items, &fetched), S_OK);
    EXPECT_EQ(fetched, 3u);
    EXPECT_EQ(V_I4(&items[2]), 2);
    EXPECT_EQ(walk->Next(4, items, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 2u);
    EXPECT_EQ(V_I4(&items[1]), 4);
    EXPECT_EQ(walk->Next(1, items, nullptr), S_FALSE);
    EXPECT_EQ(walk->Next(2, items, nullptr), E_POINTER);
    EXPECT_EQ(walk->Next(1, nullptr, &fetched), E_POINTER);
}

TEST_F(EnumVariantTest, SkipResetAndCloneMoveEachOnTheirOwn) {
    auto walk = Numbers(3);
    EXPECT_EQ(walk->Skip(2), S_OK);
    ComPtr<IEnumVARIANT> clone;
    ASSERT_EQ(walk->Clone(clone.Out()), S_OK);
    EXPECT_EQ(walk->Skip(2), S_FALSE);
    EXPECT_EQ(NextOf(*clone), 2);
    EXPECT_EQ(walk->Reset(), S_OK);
    EXPECT_EQ(NextOf(*walk), 0);
    EXPECT_EQ(NextOf(*clone), -1);
    EXPECT_EQ(walk->Clone(nullptr), E_POINTER);
}

TEST_F(EnumVariantTest, HoldsItsObjectsAndTheModule) {
    auto probe = Make<ProbeObject>();
    Variant item = Variant::Object(probe.Get());
    auto walk = Make<EnumVariant>();
    ASSERT_EQ(walk->Init(&item.Get(), 1), S_OK);
    ComPtr<IEnumVARIANT> clone;
    ASSERT_EQ(walk->Clone(clone.Out()), S_OK);
    item.Reset();
    walk.Reset();
    EXPECT_EQ(Module::LockCount(), 2);
    EXPECT_EQ(clone->Next(1, item.Out(), nullptr), S_OK);
    EXPECT_EQ(V_DISPATCH(&item.Get()), probe.Get());
    clone.Reset();
    item.Reset();
    EXPECT_EQ(References(*probe), 1u);
}

TEST_F(EnumVariantTest, WithAnElementThatCannotBeCopiedHoldsNothing) {
    auto probe = Make<ProbeObject>();
    Variant object = Variant::Object(probe.Get());
    VARIANT wrong;
    V_VT(&wrong) = VT_BSTR | VT_VECTOR;
    const VARIANT items[] = {object.Get(), wrong};
    auto walk = Make<EnumVariant>();
    EXPECT_EQ(walk->Init(items, 2), DISP_E_BADVARTYPE);
    EXPECT_EQ(walk->Skip(1), S_FALSE);
    object.Reset();
    EXPECT_EQ(References(*probe), 1u);
}

}  // namespace
}  // namespace zel
