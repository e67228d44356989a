// SmartPointerClient FILE SAVED-AS
// Early-bound: prints the tree of definitions, adds one and saves under another name. Uses the standard smart
// pointers on the interfaces of ZEL_BRU.h, which the build generates with the GUIDs in ZEL_BRU_i.c.
#include <windows.h>
#include <comdef.h>

#include <clocale>
#include <cstdio>

#include "ZEL_BRU.h"

_COM_SMARTPTR_TYPEDEF(IBRU_Store, __uuidof(IBRU_Store));
_COM_SMARTPTR_TYPEDEF(IZEL_Header, __uuidof(IZEL_Header));
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

IZEL_CollectionPtr DefinitionsOf(IBRU_Store* store) {
    IZEL_CollectionPtr definitions;
    Check(store->get_Definitions(&definitions));
    return definitions;
}

// The bytes of a list of definitions in a file, in a code page of one byte a character.
long SizeOf(IZEL_Collection* definitions, int version) {
    long size = 2, count = 0;
    Check(definitions->get_Count(&count));
    for (long i = 0; i < count; ++i) {
        const IZEL_DefinitionPtr definition = At(definitions, i);
        if (!definition) continue;
        _bstr_t code, subtracted;
        IZEL_CollectionPtr members;
        Check(definition->get_AreaCode(code.GetAddress()));
        Check(definition->get_SubtractAreaCode(subtracted.GetAddress()));
        Check(definition->get_Members(&members));
        size += 111 + static_cast<long>(code.length()) + SizeOf(members, version);
        if (version >= 2) size += 1;
        if (version >= 3) size += 2 + static_cast<long>(subtracted.length());
    }
    return size;
}

// Whether the file holds what the store does and no more, by its size.
bool IsWhole(IBRU_Store* store, const wchar_t* file) {
    IZEL_HeaderPtr header;
    long flags = 0;
    unsigned char version = 0;
    Check(store->get_Header(&header));
    Check(header->get_Flags(&flags));
    Check(header->get_FileVersion(&version));
    const long size = 54 + (flags & 0x10 ? 11 : 0) + (flags & 0x100 ? 42 : 0) + (version >= 4 ? 1 : 0) +
                      (version >= 5 ? 4 : 0) + SizeOf(DefinitionsOf(store), version);
    WIN32_FILE_ATTRIBUTE_DATA found{};
    return GetFileAttributesExW(file, GetFileExInfoStandard, &found) && found.nFileSizeHigh == 0 &&
           found.nFileSizeLow == static_cast<DWORD>(size);
}

// A store answers a load that opens nothing by the version it holds; this one holds one that is refused.
IBRU_StorePtr Load(const wchar_t* file) {
    IBRU_StorePtr store;
    Check(store.CreateInstance(CLSID_BRU_Store));
    IZEL_HeaderPtr header;
    Check(store->get_Header(&header));
    Check(header->put_FileVersion(255));
    long result = 0;
    Check(store->SaveToFile(_bstr_t(L""), &result));
    Check(store->LoadFromFile(_bstr_t(file), &result));
    return result == 0 ? store : nullptr;
}

// A write that fails half-way is not reported: what was saved is read back and has to be as much.
const char* Save(IBRU_Store* store, const wchar_t* file) {
    if (GetFileAttributesW(file) != INVALID_FILE_ATTRIBUTES) return "there is such a file already";
    long result = 0;
    const HRESULT saved = store->SaveToFile(_bstr_t(file), &result);
    if (result != 0) return "this version of a file cannot be saved";
    if (saved != S_OK) return "cannot write the file";
    const IBRU_StorePtr back = Load(file);
    if (back && IsWhole(store, file) && IsWhole(back, file)) return nullptr;
    DeleteFileW(file);
    return "the file cannot be saved whole";
}

int Run(const wchar_t* file, const wchar_t* savedAs) {
    const IBRU_StorePtr store = Load(file);
    if (!store) return std::printf("not a file that can be opened and read\n"), 1;
    if (!IsWhole(store, file))
        return std::printf("damaged, or more than definitions, which a save would lose\n"), 1;
    AddGarage(DefinitionsOf(store));
    PrintTree(DefinitionsOf(store), 0);
    const char* fault = Save(store, savedAs);
    if (!fault) return 0;
    std::printf("%s\n", fault);
    return 1;
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
