// SmartPointerClient FILE SAVED-AS
// Early-bound: prints the tree of definitions, adds one and saves. Uses the standard smart pointers on the
// interfaces of ZEL_BRU.h, which the build generates with the GUIDs in ZEL_BRU_i.c.
#include <windows.h>
#include <comdef.h>

#include <clocale>
#include <cstdio>

#include "ZEL_BRU.h"

_COM_SMARTPTR_TYPEDEF(IBRU_Store, __uuidof(IBRU_Store));
_COM_SMARTPTR_TYPEDEF(IZEL_Collection, __uuidof(IZEL_Collection));
_COM_SMARTPTR_TYPEDEF(IZEL_Definition, __uuidof(IZEL_Definition));

namespace {

// 0 and 1 are both successes. A get of a code answers 1, so compare with S_OK only where 1 is said to be a
// refusal.
void Check(HRESULT result) {
    if (FAILED(result)) throw _com_error(result);
}

// Null where the collection has no definition at that position: that is no error.
IZEL_DefinitionPtr At(IZEL_Collection* definitions, long position) {
    _variant_t item;
    Check(definitions->Item(_variant_t(position), &item));
    return V_VT(&item) == VT_DISPATCH ? IZEL_DefinitionPtr(V_DISPATCH(&item)) : nullptr;
}

void PrintTree(IZEL_Collection* definitions, int indent) {
    long count = 0;
    Check(definitions->get_Count(&count));
    for (long i = 0; i < count; ++i) {
        const IZEL_DefinitionPtr definition = At(definitions, i);
        if (!definition) continue;
        _bstr_t code, name;
        double factor = 0;
        IZEL_CollectionPtr members;
        Check(definition->get_AreaCode(code.GetAddress()));
        Check(definition->get_AreaName(name.GetAddress()));
        Check(definition->get_Multiplier(&factor));
        Check(definition->get_Members(&members));
        std::printf("%*s%-*ls %-20ls %g\n", indent, "", 10 - indent, code.GetBSTR(), name.GetBSTR(), factor);
        PrintTree(members, indent + 2);
    }
}

void AddGarage(IZEL_Collection* definitions) {
    IZEL_DefinitionPtr garage;
    Check(garage.CreateInstance(CLSID_ZEL_Definition));
    Check(garage->put_AreaCode(_bstr_t(L"GAR2")));
    Check(garage->put_AreaName(_bstr_t(L"Detached Garage")));
    Check(garage->put_Multiplier(0.5));
    Check(definitions->Add(_variant_t(garage.GetInterfacePtr())));
}

int Run(const wchar_t* file, const wchar_t* savedAs) {
    IBRU_StorePtr store;
    Check(store.CreateInstance(CLSID_BRU_Store));
    long result = 0;
    Check(store->LoadFromFile(_bstr_t(file), &result));
    if (result != 0) return std::printf("not a file that this version can read\n"), 1;

    IZEL_CollectionPtr definitions;
    Check(store->get_Definitions(&definitions));
    AddGarage(definitions);
    PrintTree(definitions, 0);

    const HRESULT saved = store->SaveToFile(_bstr_t(savedAs), &result);
    if (result != 0) return std::printf("this version of a file cannot be saved\n"), 1;
    if (saved != S_OK) return std::printf("cannot write the file\n"), 1;
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    std::setlocale(LC_ALL, "");
    if (count != 3) return std::printf("usage: SmartPointerClient FILE SAVED-AS\n"), 1;
    if (FAILED(CoInitialize(nullptr))) return 1;
    int status = 1;
    try {
        status = Run(arguments[1], arguments[2]);
    } catch (const _com_error& error) {
        std::printf("error 0x%08lx\n", static_cast<unsigned long>(error.Error()));
    }
    CoUninitialize();
    return status;
}
