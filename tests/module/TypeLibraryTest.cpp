#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "zel/com/Bstr.h"
#include "zel/com/ComPtr.h"
#include "RegistryScope.h"
#include "Server.h"

namespace zel {
namespace {

// The name of a library, a type or a member with its help string behind it.
template <class Described>
std::string NameAndHelp(Described& described, LONG member = MEMBERID_NIL) {
    Bstr name, help;
    described.GetDocumentation(member, name.Out(), help.Out(), nullptr, nullptr);
    return ToUtf8(name.Get()) + " '" + ToUtf8({help.Get(), help.Get() + help.Length()}) + "'";
}

ComPtr<ITypeInfo> Referred(ITypeInfo& info, HREFTYPE reference) {
    ComPtr<ITypeInfo> target;
    info.GetRefTypeInfo(reference, target.Out());
    return target;
}

std::string TypeName(ITypeInfo& info, const TYPEDESC& type) {
    static std::map<VARTYPE, std::string> names = {
        {VT_I4, "long"},   {VT_UI1, "unsigned char"}, {VT_UI2, "unsigned short"}, {VT_R8, "double"},
        {VT_BSTR, "BSTR"}, {VT_VARIANT, "VARIANT"},   {VT_UNKNOWN, "IUnknown*"},  {VT_HRESULT, "HRESULT"}};
    if (type.vt == VT_PTR) return TypeName(info, *type.lptdesc) + "*";
    if (type.vt != VT_USERDEFINED) return names[type.vt];
    const std::string name = NameAndHelp(*Referred(info, type.hreftype));
    return name.substr(0, name.find(' '));
}

// "13: 7 put Flags 'property Flags' ([in] long) HRESULT" in place 13 of the virtual table. What names a
// putter's parameter is not to be had: a property's names are those of its getter.
void DumpMember(ITypeInfo& info, const FUNCDESC& member, std::ostream& dump) {
    static std::map<USHORT, const char*> directions = {
        {0, ""}, {PARAMFLAG_FIN, "[in] "}, {PARAMFLAG_FOUT | PARAMFLAG_FRETVAL, "[out, retval] "}};
    const char* kinds[] = {"", "method", "get", "", "put", "", "", "", "putref"};
    Bstr names[9];
    UINT count = 0;
    info.GetNames(member.memid, names[0].Out(), 9, &count);
    dump << "    " << member.oVft / sizeof(void*) << ": " << member.memid << " " << kinds[member.invkind]
         << " " << NameAndHelp(info, member.memid) << " (";
    for (SHORT i = 0; i < member.cParams; ++i) {
        const ELEMDESC& parameter = member.lprgelemdescParam[i];
        const char* direction = directions[parameter.paramdesc.wParamFlags];
        dump << (i ? ", " : "") << (direction ? direction : "[?] ") << TypeName(info, parameter.tdesc);
        if (names[i + 1] && member.invkind != INVOKE_PROPERTYPUT) dump << " " << ToUtf8(names[i + 1].Get());
    }
    dump << ") " << TypeName(info, member.elemdescFunc.tdesc) << ", flags " << member.wFuncFlags << "\n";
}

// What an interface is based on, or a class gives, stands before the members. Flags are the platform's bits.
void DumpType(ITypeInfo& info, std::ostream& dump) {
    TYPEATTR* type = nullptr;
    info.GetTypeAttr(&type);
    dump << "\n" << (type->typekind == TKIND_COCLASS ? "class " : "interface ") << NameAndHelp(info);
    dump << ", flags " << type->wTypeFlags << "\n";
    for (UINT i = 0; i < type->cImplTypes; ++i) {
        INT flags = 0;
        HREFTYPE reference = 0;
        info.GetImplTypeFlags(i, &flags);
        info.GetRefTypeOfImplType(i, &reference);
        dump << "    is " << NameAndHelp(*Referred(info, reference)) << ", flags " << flags << "\n";
    }
    for (UINT i = 0; i < type->cFuncs; ++i) {
        FUNCDESC* member = nullptr;
        info.GetFuncDesc(i, &member);
        DumpMember(info, *member, dump);
        info.ReleaseFuncDesc(member);
    }
    info.ReleaseTypeAttr(type);
}

TEST(TypeLibrary, DescribesItselfItsInterfacesAndClasses) {
    std::ostringstream dump;
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLib(BuiltFile("ZEL_BRU.dll").c_str(), library.Out()), S_OK);
    TLIBATTR* own = nullptr;
    ASSERT_EQ(library->GetLibAttr(&own), S_OK);
    dump << "library " << NameAndHelp(*library) << " " << own->wMajorVerNum << "." << own->wMinorVerNum
         << ", language " << own->lcid << ", system " << own->syskind << "\n";
    library->ReleaseTLibAttr(own);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        HREFTYPE reference = 0;
        library->GetTypeInfo(i, info.Out());
        // Behind what clients see of a dual interface by name is the one with its own members only.
        if (!info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) info = Referred(*info, reference);
        DumpType(*info, dump);
    }
    EXPECT_EQ(dump.str(), TextOf(ZEL_EXPECTED "type_library.txt"));
}

}  // namespace
}  // namespace zel
