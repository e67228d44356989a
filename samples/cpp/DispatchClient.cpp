// DispatchClient FILE
// Late-bound: prints a definition file by names alone, as a script does. Needs no header of the module, only
// its registration.
#include <windows.h>
#include <comdef.h>

#include <clocale>
#include <cstdio>

_COM_SMARTPTR_TYPEDEF(IDispatch, __uuidof(IDispatch));
_COM_SMARTPTR_TYPEDEF(IEnumVARIANT, __uuidof(IEnumVARIANT));

namespace {

void Check(HRESULT result) {
    if (FAILED(result)) throw _com_error(result);
}

_variant_t Invoke(IDispatch* object, DISPID member, WORD flags, VARIANT* argument = nullptr) {
    DISPPARAMS arguments{argument, nullptr, argument ? 1u : 0u, 0};
    _variant_t value;
    Check(object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &arguments, &value, nullptr, nullptr));
    return value;
}

DISPID Named(IDispatch* object, const wchar_t* name) {
    auto* text = const_cast<wchar_t*>(name);
    DISPID member = DISPID_UNKNOWN;
    Check(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &member));
    return member;
}

_variant_t Get(IDispatch* object, const wchar_t* name) {
    return Invoke(object, Named(object, name), DISPATCH_PROPERTYGET);
}

void Put(IDispatch* object, const wchar_t* name, _variant_t value) {
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS arguments{&value, &put, 1, 1};
    Check(object->Invoke(Named(object, name), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &arguments,
                         nullptr, nullptr, nullptr));
}

_variant_t Call(IDispatch* object, const wchar_t* name, _variant_t argument) {
    return Invoke(object, Named(object, name), DISPATCH_METHOD, &argument);
}

_bstr_t Text(IDispatch* object, const wchar_t* name) { return _bstr_t(Get(object, name)); }

void PrintTree(IDispatch* definitions, int indent) {
    const _variant_t walker = Invoke(definitions, DISPID_NEWENUM, DISPATCH_PROPERTYGET);
    const IEnumVARIANTPtr each(V_UNKNOWN(&walker));
    for (;;) {
        _variant_t item;
        if (each->Next(1, &item, nullptr) != S_OK) return;
        if (V_VT(&item) != VT_DISPATCH) continue;
        IDispatch* definition = V_DISPATCH(&item);
        std::printf("%*s%-*ls %-20ls fill %d\n", indent, "", 10 - indent,
                    Text(definition, L"AreaCode").GetBSTR(), Text(definition, L"AreaName").GetBSTR(),
                    static_cast<int>(Get(definition, L"FillColor")));
        const _variant_t members = Get(definition, L"Members");
        PrintTree(V_DISPATCH(&members), indent + 2);
    }
}

int Run(const wchar_t* file) {
    IDispatchPtr store;
    Check(store.CreateInstance(L"ZEL_BRU.BRU_Store"));
    const _variant_t header = Get(store, L"Header"), definitions = Get(store, L"Definitions");
    // A store answers a load that opens nothing by the version it holds; this one holds one that is refused.
    Put(V_DISPATCH(&header), L"FileVersion", 255L);
    Call(store, L"SaveToFile", L"");
    if (static_cast<long>(Call(store, L"LoadFromFile", file)) != 0)
        return std::printf("not a file that can be opened and read\n"), 1;
    std::printf("%ls, version %d, last modified by %ls\n", Text(V_DISPATCH(&header), L"Signature").GetBSTR(),
                static_cast<int>(Get(V_DISPATCH(&header), L"FileVersion")),
                Text(V_DISPATCH(&header), L"LastModifiedBy").GetBSTR());
    PrintTree(V_DISPATCH(&definitions), 0);
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    std::setlocale(LC_ALL, "");
    if (count != 2) return std::printf("usage: DispatchClient FILE\n"), 1;
    if (FAILED(CoInitialize(nullptr))) return 1;
    int status = 1;
    try {
        status = Run(arguments[1]);
    } catch (const _com_error& error) {
        std::printf("error 0x%08lx\n", static_cast<unsigned long>(error.Error()));
    }
    CoUninitialize();
    return status;
}
