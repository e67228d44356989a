#pragma once

#include <windows.h>
#include <oleauto.h>

#include <gmock/internal/gmock-pp.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "zel/automation/BRU_Store.h"
#include "zel/com/Bstr.h"
#include "zel/com/Object.h"
#include "zel/com/Variant.h"
#include "zel/automation/ZEL_Definition.h"
#include "LateBound.h"

namespace zel {

inline ULONG References(IUnknown& object) {
    object.AddRef();
    return object.Release();
}

inline std::wstring AsText(Variant value) {
    VariantChangeType(value.InOut(), value.InOut(), 0, VT_BSTR);
    return {V_BSTR(&value.Get()), SysStringLen(V_BSTR(&value.Get()))};
}

// A property of any type as text.
inline std::wstring Get(IDispatch& object, const wchar_t* name) {
    Variant value;
    EXPECT_EQ(S_OK, Call(object, name, DISPATCH_PROPERTYGET, nullptr, value.Out())) << name;
    return AsText(std::move(value));
}

inline ComPtr<ZEL_Definition> AddNew(IZEL_Collection& items, const wchar_t* code) {
    ComPtr<ZEL_Definition> definition = Make<ZEL_Definition>();
    definition->put_AreaCode(Bstr(code).Get());
    items.Add(Variant::Object(definition.Get()).Get());
    return definition;
}
inline ComPtr<ZEL_Collection> Numbers(LONG count) {
    ComPtr<ZEL_Collection> items = Make<ZEL_Collection>();
    for (LONG i = 0; i < count; ++i) items->Add(Variant::Int(i).Get());
    return items;
}

// The items of a collection: "GLA1(A B(C)) BSMT" for definitions of ours by code, "5" for a number.
inline std::wstring Tree(IZEL_Collection& items) {
    std::wstring tree;
    LONG count = 0;
    items.get_Count(&count);
    for (LONG i = 0; i < count; ++i) {
        Variant item;
        EXPECT_EQ(S_OK, items.Item(Variant::Int(i).Get(), item.Out()));
        const bool isObject = item.Type() == VT_DISPATCH;
        auto* definition = isObject ? static_cast<ZEL_Definition*>(V_DISPATCH(&item.Get())) : nullptr;
        const std::wstring members = definition ? Tree(definition->Members()) : L"";
        tree += (i > 0 ? L" " : L"") + (definition ? Get(*definition, L"AreaCode") : AsText(std::move(item)));
        if (!members.empty()) tree += L'(' + members + L')';
    }
    return tree;
}

// For a client's own implementations of the interfaces. ZEL_REFUSE(type, names...): properties that can be
// neither got nor put.
#define ZEL_REFUSE_PROPERTY(index, type, name)                    \
    STDMETHODIMP get_##name(type*) override { return E_NOTIMPL; } \
    STDMETHODIMP put_##name(type) override { return E_NOTIMPL; }
#define ZEL_REFUSE(type, ...) GMOCK_PP_FOR_EACH(ZEL_REFUSE_PROPERTY, type, (__VA_ARGS__))

struct ForeignHeader final : Object<Interfaces<IZEL_Header, IDispatch>, Dispatch<IZEL_Header>> {
    ZEL_REFUSE(unsigned char, TarnVersion, FileVersion, Type)
    ZEL_REFUSE(LONG, CreationDate, CreationTime, Flags, ModifiedDate, ModifiedTime)
    ZEL_REFUSE(BSTR, CreatedBy, CreatedByVersion, LastModifiedBy, ModifiedByVersion)
    ZEL_REFUSE(BSTR, ProgramVersionSignature, Signature)
};

// A test with a file in the current folder, which goes away with it as all its objects must.
class AutomationTest : public testing::Test {
protected:
    static constexpr wchar_t kFile[] = L"automation_test.tmp";
    static constexpr wchar_t kMissing[] = L"no such folder\\no such file";

    void TearDown() override {
        _wremove(kFile);
        EXPECT_EQ(0, Module::LockCount());
    }

    // What a load or save returned, and its `Result`.
    using Outcome = std::pair<HRESULT, LONG>;
    static constexpr Outcome kDone{0, 0}, kNotOpened{1, 0}, kVersionRefused{1, 1};

    // A new store and its live objects.
    struct Store {
        Store() {
            object->get_Header(header.Out());
            object->get_Definitions(definitions.Out());
        }
        Outcome Load(const std::wstring& path = kFile) { return Run(&IBRU_Store::LoadFromFile, path); }
        Outcome Save(const std::wstring& path = kFile) { return Run(&IBRU_Store::SaveToFile, path); }
        Outcome Run(HRESULT (STDMETHODCALLTYPE IBRU_Store::*operation)(BSTR, LONG*),
                    const std::wstring& path) {
            LONG result = -1;
            const HRESULT returned = (object.Get()->*operation)(Bstr(path.c_str()).Get(), &result);
            return {returned, result};
        }

        ComPtr<BRU_Store> object = Make<BRU_Store>();
        ComPtr<IZEL_Header> header;
        ComPtr<IZEL_Collection> definitions;
    };
};

}  // namespace zel
