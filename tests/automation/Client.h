#pragma once

#include <windows.h>

#include <comdef.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "ZEL_BRU.h"

namespace zel {

// Clients see the objects through the standard smart pointers.
using StorePtr = _com_ptr_t<_com_IIID<IBRU_Store, &__uuidof(IBRU_Store)>>;
using HeaderPtr = _com_ptr_t<_com_IIID<IZEL_Header, &__uuidof(IZEL_Header)>>;
using CollectionPtr = _com_ptr_t<_com_IIID<IZEL_Collection, &__uuidof(IZEL_Collection)>>;
using DefinitionPtr = _com_ptr_t<_com_IIID<IZEL_Definition, &__uuidof(IZEL_Definition)>>;
using DispatchPtr = _com_ptr_t<_com_IIID<IDispatch, &__uuidof(IDispatch)>>;

// The built module, as a client without registration loads it.
class Server {
public:
    template <class Ptr>
    static Ptr Create(REFCLSID clsid) {
        _com_ptr_t<_com_IIID<IClassFactory, &__uuidof(IClassFactory)>> factory;
        Ptr object;
        Entry<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>("DllGetClassObject")(
            clsid, __uuidof(IClassFactory), reinterpret_cast<void**>(&factory));
        factory->CreateInstance(nullptr, __uuidof(typename Ptr::Interface),
                                reinterpret_cast<void**>(&object));
        return object;
    }
    static StorePtr NewStore() { return Create<StorePtr>(CLSID_BRU_Store); }
    static HeaderPtr NewHeader() { return Create<HeaderPtr>(CLSID_ZEL_Header); }
    static CollectionPtr NewCollection() { return Create<CollectionPtr>(CLSID_ZEL_Collection); }
    static DefinitionPtr NewDefinition() { return Create<DefinitionPtr>(CLSID_ZEL_Definition); }

    static bool CanUnload() { return Entry<HRESULT(WINAPI*)()>("DllCanUnloadNow")() == S_OK; }

private:
    template <class Function>
    static Function Entry(const char* name) {
        static const HMODULE module = LoadLibraryW(ZEL_MODULE);
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    }
};

inline ULONG References(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

// A string argument that the caller keeps.
class Text {
public:
    explicit Text(const wchar_t* text) : text_(SysAllocString(text)) {}
    Text(const Text&) = delete;
    ~Text() { SysFreeString(text_); }
    operator BSTR() const { return text_; }

private:
    BSTR text_;
};

// A text property's value; `result` gets what the getter answered.
template <class Interface>
std::wstring Get(Interface* object, HRESULT (STDMETHODCALLTYPE Interface::*get)(BSTR*),
                 HRESULT* result = nullptr) {
    BSTR text = SysAllocString(L"previous");
    const HRESULT answer = (object->*get)(&text);
    if (result) *result = answer;
    const std::wstring value(text, SysStringLen(text));
    SysFreeString(text);
    return value;
}

template <class Interface, class Value>
Value Get(Interface* object, HRESULT (STDMETHODCALLTYPE Interface::*get)(Value*)) {
    Value value{};
    EXPECT_EQ(S_OK, (object->*get)(&value));
    return value;
}

// Plain VARIANTs: nobody owns what they refer to.
inline VARIANT Int(LONG value, VARTYPE type = VT_I4) {
    VARIANT variant;
    VariantInit(&variant);
    V_VT(&variant) = type;
    V_I4(&variant) = value;
    return variant;
}
inline VARIANT ObjectIn(IDispatch* object) {
    VARIANT variant;
    VariantInit(&variant);
    V_VT(&variant) = VT_DISPATCH;
    V_DISPATCH(&variant) = object;
    return variant;
}

inline LONG Count(IZEL_Collection* items) { return Get(items, &IZEL_Collection::get_Count); }

inline DefinitionPtr At(IZEL_Collection* items, LONG index) {
    VARIANT item = Int(0, VT_EMPTY);
    items->Item(Int(index), &item);
    DefinitionPtr definition;
    if (V_VT(&item) == VT_DISPATCH) definition = V_DISPATCH(&item);
    VariantClear(&item);
    return definition;
}

// Adds a new definition with a code to a collection.
inline DefinitionPtr AddNew(IZEL_Collection* items, const wchar_t* code) {
    DefinitionPtr definition = Server::NewDefinition();
    definition->put_AreaCode(Text(code));
    items->Add(ObjectIn(definition));
    return definition;
}

inline CollectionPtr Members(IZEL_Definition* definition) {
    CollectionPtr members;
    definition->get_Members(&members);
    return members;
}
inline CollectionPtr Definitions(IBRU_Store* store) {
    CollectionPtr definitions;
    store->get_Definitions(&definitions);
    return definitions;
}
inline HeaderPtr Header(IBRU_Store* store) {
    HeaderPtr header;
    store->get_Header(&header);
    return header;
}

// The codes below a collection: "GLA1(A B(C)) BSMT".
inline std::wstring Tree(IZEL_Collection* items) {
    std::wstring tree;
    for (LONG i = 0; i < Count(items); ++i) {
        const DefinitionPtr definition = At(items, i);
        if (!tree.empty()) tree += L' ';
        tree += definition ? Get(definition.GetInterfacePtr(), &IZEL_Definition::get_AreaCode) : L"?";
        const std::wstring members = definition ? Tree(Members(definition)) : L"";
        if (!members.empty()) tree += L'(' + members + L')';
    }
    return tree;
}

// A file in the current folder that goes away with the test.
class TemporaryFile {
public:
    TemporaryFile() : name_(L"store_test.tmp") { std::remove("store_test.tmp"); }
    TemporaryFile(const TemporaryFile&) = delete;
    ~TemporaryFile() { std::remove("store_test.tmp"); }

    operator BSTR() const { return name_; }
    std::string Bytes() const {
        std::ifstream file("store_test.tmp", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Write(const std::string& bytes) const { std::ofstream("store_test.tmp", std::ios::binary) << bytes; }

private:
    Text name_;
};

}  // namespace zel
