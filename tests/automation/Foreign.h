#pragma once

#include "Client.h"

namespace zel {

// A client's own implementation of one of the interfaces, on the test's stack. It refuses late binding.
template <class Interface>
class Foreign : public Interface {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
        const bool known = iid == __uuidof(Interface) || iid == IID_IDispatch || iid == IID_IUnknown;
        *out = known ? this : nullptr;
        if (known) ++references;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    ULONG references = 1;
};

#define ZEL_REFUSE(name, type)                                    \
    STDMETHODIMP get_##name(type*) override { return E_NOTIMPL; } \
    STDMETHODIMP put_##name(type) override { return E_NOTIMPL; }

// Knows its name and its type, and refuses the rest.
class ForeignHeader : public Foreign<IZEL_Header> {
public:
    STDMETHODIMP get_CreatedBy(BSTR* pVal) override {
        return SysReAllocString(pVal, L"client") ? S_FALSE : E_FAIL;
    }
    STDMETHODIMP put_CreatedBy(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_Type(unsigned char* pVal) override {
        *pVal = 5;
        return S_OK;
    }
    STDMETHODIMP put_Type(unsigned char) override { return E_NOTIMPL; }
    ZEL_REFUSE(TarnVersion, unsigned char)
    ZEL_REFUSE(CreatedByVersion, BSTR)
    ZEL_REFUSE(CreationDate, LONG)
    ZEL_REFUSE(CreationTime, LONG)
    ZEL_REFUSE(FileVersion, unsigned char)
    ZEL_REFUSE(Flags, LONG)
    ZEL_REFUSE(LastModifiedBy, BSTR)
    ZEL_REFUSE(ModifiedByVersion, BSTR)
    ZEL_REFUSE(ModifiedDate, LONG)
    ZEL_REFUSE(ModifiedTime, LONG)
    ZEL_REFUSE(ProgramVersionSignature, BSTR)
    ZEL_REFUSE(Signature, BSTR)
};

// Has a code and, if given, members; refuses the rest.
class ForeignDefinition : public Foreign<IZEL_Definition> {
public:
    explicit ForeignDefinition(const wchar_t* code) : code_(code) {}

    STDMETHODIMP get_AreaCode(BSTR* pVal) override {
        return SysReAllocString(pVal, code_) ? S_FALSE : E_FAIL;
    }
    STDMETHODIMP put_AreaCode(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_Members(IZEL_Collection** pVal) override {
        if (!members) return E_NOTIMPL;
        *pVal = members;
        members->AddRef();
        return S_OK;
    }
    STDMETHODIMP put_Members(IZEL_Collection*) override { return E_NOTIMPL; }
    ZEL_REFUSE(AreaDescription, BSTR)
    ZEL_REFUSE(AreaName, BSTR)
    ZEL_REFUSE(CalcType, unsigned char)
    ZEL_REFUSE(DimensionType, unsigned char)
    ZEL_REFUSE(FillColor, unsigned short)
    ZEL_REFUSE(FillPattern, unsigned short)
    ZEL_REFUSE(Hidden, unsigned char)
    ZEL_REFUSE(LineColor, unsigned short)
    ZEL_REFUSE(Multiplier, double)
    ZEL_REFUSE(PostArea, unsigned char)
    ZEL_REFUSE(PostDescription, unsigned char)
    ZEL_REFUSE(SegmentStyle, BSTR)
    ZEL_REFUSE(SubtractAreaCode, BSTR)
    ZEL_REFUSE(WallHeight, double)
    ZEL_REFUSE(WallWidth, double)

    IZEL_Collection* members = nullptr;

private:
    const wchar_t* code_;
};

#undef ZEL_REFUSE

// Holds the given objects; notes the type of the positions it is asked for.
class ForeignCollection : public Foreign<IZEL_Collection> {
public:
    explicit ForeignCollection(std::vector<IDispatch*> items) : items_(std::move(items)) {}

    STDMETHODIMP Item(VARIANT index, VARIANT* pItem) override {
        indexType = V_VT(&index);
        VARIANT item = ObjectIn(items_.at(V_UI4(&index)));
        return VariantCopy(pItem, &item);
    }
    STDMETHODIMP get_Count(LONG* pVal) override {
        *pVal = static_cast<LONG>(items_.size());
        return S_OK;
    }
    STDMETHODIMP get__NewEnum(IUnknown**) override { return E_NOTIMPL; }
    STDMETHODIMP Add(VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP Remove(VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP Copy(IZEL_Collection*) override { return E_NOTIMPL; }

    VARTYPE indexType = VT_EMPTY;

private:
    std::vector<IDispatch*> items_;
};

}  // namespace zel
