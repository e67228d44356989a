#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "Bstr.h"
#include "ComPtr.h"
#include "RegistryScope.h"
#include "Server.h"

namespace zel {
namespace {

using testing::ElementsAreArray;
using Lines = std::vector<std::string>;

std::string TypeName(ITypeInfo& info, const TYPEDESC& type) {
    static const std::map<VARTYPE, std::string> names = {
        {VT_I4, "long"},   {VT_UI1, "unsigned char"}, {VT_UI2, "unsigned short"}, {VT_R8, "double"},
        {VT_BSTR, "BSTR"}, {VT_VARIANT, "VARIANT"},   {VT_UNKNOWN, "IUnknown*"},  {VT_HRESULT, "HRESULT"}};
    if (type.vt == VT_PTR) return TypeName(info, *type.lptdesc) + "*";
    if (type.vt != VT_USERDEFINED) return names.at(type.vt);
    ComPtr<ITypeInfo> target;
    Bstr name;
    info.GetRefTypeInfo(type.hreftype, target.Out());
    target->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr);
    return ToUtf8(name.Get());
}

// "7 put HRESULT Flags([in] long) 'property Flags'". What names a putter's parameter is not to be had: a
// property's names are those of its getter.
std::string Describe(ITypeInfo& info, const FUNCDESC& member) {
    Bstr names[9], help;
    UINT count = 0;
    info.GetNames(member.memid, names[0].Out(), 9, &count);
    info.GetDocumentation(member.memid, nullptr, help.Out(), nullptr, nullptr);
    const char* kinds[] = {"", "method", "get", "", "put"};
    std::string line = std::to_string(member.memid) + " " + kinds[member.invkind];
    if (member.wFuncFlags & FUNCFLAG_FRESTRICTED) line += " restricted";
    line += " " + TypeName(info, member.elemdescFunc.tdesc) + " " + ToUtf8(names[0].Get()) + "(";
    for (SHORT i = 0; i < member.cParams; ++i) {
        const ELEMDESC& parameter = member.lprgelemdescParam[i];
        const USHORT flags = parameter.paramdesc.wParamFlags;
        line += i == 0 ? "" : ", ";
        line += flags == PARAMFLAG_FIN                          ? "[in] "
                : flags == (PARAMFLAG_FOUT | PARAMFLAG_FRETVAL) ? "[out, retval] "
                : flags == 0                                    ? ""
                                                                : "[?] ";
        line += TypeName(info, parameter.tdesc);
        if (names[i + 1] && member.invkind != INVOKE_PROPERTYPUT) line += " " + ToUtf8(names[i + 1].Get());
    }
    return line + ") '" + ToUtf8(help.Get()) + "'";
}

// The interface that a dual one's description for dispatch stands for, with its own members only.
ComPtr<ITypeInfo> VirtualTableView(ITypeInfo& dispatch) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> view;
    dispatch.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference);
    dispatch.GetRefTypeInfo(reference, view.Out());
    return view;
}

// The members that a list "type name, type name, ..." of properties stands for, numbered from 1; one without
// a type is a method that takes a file.
Lines Members(const std::string& list) {
    Lines lines;
    std::istringstream items(list);
    int id = 0;
    for (std::string item; std::getline(items >> std::ws, item, ',');) {
        const std::size_t blank = item.rfind(' ');
        const std::string name = item.substr(blank + 1), type = item.substr(0, blank),
                          number = std::to_string(++id);
        if (blank == item.npos) {
            lines.push_back(number + " method HRESULT " + name +
                            "(BSTR FileName, [out, retval] long* Result) 'method " + name + "'");
            continue;
        }
        lines.push_back(number + " get HRESULT " + name + "([out, retval] " + type + "* pVal) 'property " +
                        name + "'");
        lines.push_back(number + " put HRESULT " + name + "([in] " + type + ") 'property " + name + "'");
    }
    return lines;
}

struct InterfaceCase {
    const char* name;
    const IID& iid;
    const CLSID& clsid;
    Lines members;
};

void PrintTo(const InterfaceCase& row, std::ostream* out) { *out << row.name; }

const InterfaceCase kInterfaces[] = {
    {"ZEL_Collection",
     IID_IZEL_Collection,
     CLSID_ZEL_Collection,
     {"0 method HRESULT Item([in] VARIANT index, [out, retval] VARIANT* pItem) 'method Item'",
      "1 get HRESULT Count([out, retval] long* pVal) 'property Count'",
      "-4 get restricted HRESULT _NewEnum([out, retval] IUnknown** pVal) 'property _NewEnum'",
      "2 method HRESULT Add([in] VARIANT pNew) 'method Add'",
      "3 method HRESULT Remove([in] VARIANT index) 'method Remove'",
      "4 method HRESULT Copy([in] IZEL_Collection* pCopy) 'method Copy'"}},
    {"ZEL_Header", IID_IZEL_Header, CLSID_ZEL_Header,
     Members("unsigned char TarnVersion, BSTR CreatedBy, BSTR CreatedByVersion, long CreationDate, long "
             "CreationTime, "
             "unsigned char FileVersion, long Flags, BSTR LastModifiedBy, BSTR ModifiedByVersion, long "
             "ModifiedDate, "
             "long ModifiedTime, BSTR ProgramVersionSignature, BSTR Signature, unsigned char Type")},
    {"ZEL_Definition", IID_IZEL_Definition, CLSID_ZEL_Definition,
     Members("BSTR AreaCode, BSTR AreaDescription, BSTR AreaName, unsigned char CalcType, unsigned char "
             "DimensionType, "
             "unsigned short FillColor, unsigned short FillPattern, unsigned char Hidden, unsigned short "
             "LineColor, "
             "IZEL_Collection* Members, double Multiplier, unsigned char PostArea, unsigned char "
             "PostDescription, "
             "BSTR SegmentStyle, BSTR SubtractAreaCode, double WallHeight, double WallWidth")},
    {"BRU_Store", IID_IBRU_Store, CLSID_BRU_Store,
     Members("IZEL_Header* Header, IZEL_Collection* Definitions, LoadFromFile, SaveToFile, "
             "unsigned char DefinitionType, long Flags")},
};

class TypeLibraryTest : public testing::TestWithParam<InterfaceCase> {
protected:
    void SetUp() override { ASSERT_EQ(LoadTypeLib(BuiltFile(L"ZEL_BRU.dll").c_str(), library_.Out()), S_OK); }

    static std::string NameAndHelp(ITypeInfo& info) {
        Bstr name, help;
        info.GetDocumentation(MEMBERID_NIL, name.Out(), help.Out(), nullptr, nullptr);
        return ToUtf8(name.Get()) + " '" + ToUtf8(help.Get()) + "'";
    }

    ComPtr<ITypeLib> library_;
};

TEST_P(TypeLibraryTest, DescribesTheInterface) {
    ComPtr<ITypeInfo> dispatch, base;
    ASSERT_EQ(library_->GetTypeInfoOfGuid(GetParam().iid, dispatch.Out()), S_OK);
    ComPtr<ITypeInfo> info = VirtualTableView(*dispatch);
    const std::string name = "I" + std::string(GetParam().name);
    EXPECT_EQ(NameAndHelp(*info), name + " '" + name + " Interface'");
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->wTypeFlags, TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE);
    Lines members;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* member = nullptr;
        ASSERT_EQ(info->GetFuncDesc(i, &member), S_OK);
        EXPECT_EQ(member->oVft, static_cast<SHORT>((7 + i) * sizeof(void*)));
        members.push_back(Describe(*info, *member));
        info->ReleaseFuncDesc(member);
    }
    info->ReleaseTypeAttr(attributes);
    EXPECT_THAT(members, ElementsAreArray(GetParam().members));

    HREFTYPE reference = 0;
    ComPtr<ITypeLib> imported;
    TLIBATTR* origin = nullptr;
    UINT index = 0;
    ASSERT_EQ(info->GetRefTypeOfImplType(0, &reference), S_OK);
    ASSERT_EQ(info->GetRefTypeInfo(reference, base.Out()), S_OK);
    ASSERT_EQ(base->GetContainingTypeLib(imported.Out(), &index), S_OK);
    ASSERT_EQ(imported->GetLibAttr(&origin), S_OK);
    TYPEATTR* root = nullptr;
    ASSERT_EQ(base->GetTypeAttr(&root), S_OK);
    EXPECT_TRUE(root->guid == IID_IDispatch);
    base->ReleaseTypeAttr(root);
    EXPECT_TRUE(origin->guid == IID_StdOle && origin->wMajorVerNum == 2 && origin->wMinorVerNum == 0);
    imported->ReleaseTLibAttr(origin);
}

TEST_P(TypeLibraryTest, DescribesTheClass) {
    ComPtr<ITypeInfo> info, face;
    ASSERT_EQ(library_->GetTypeInfoOfGuid(GetParam().clsid, info.Out()), S_OK);
    const std::string name = GetParam().name;
    EXPECT_EQ(NameAndHelp(*info), name + " '" + name + " Class'");
    TYPEATTR* attributes = nullptr;
    INT flags = 0;
    HREFTYPE reference = 0;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    EXPECT_EQ(attributes->wTypeFlags, TYPEFLAG_FCANCREATE);
    EXPECT_EQ(attributes->cImplTypes, 1);
    info->ReleaseTypeAttr(attributes);
    EXPECT_EQ(info->GetImplTypeFlags(0, &flags), S_OK);
    EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT);
    EXPECT_EQ(info->GetRefTypeOfImplType(0, &reference), S_OK);
    EXPECT_EQ(info->GetRefTypeInfo(reference, face.Out()), S_OK);
    EXPECT_EQ(NameAndHelp(*face), "I" + name + " 'I" + name + " Interface'");
}

INSTANTIATE_TEST_SUITE_P(All, TypeLibraryTest, testing::ValuesIn(kInterfaces),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TypeLibrary, StatesItself) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLib(BuiltFile(L"ZEL_BRU.dll").c_str(), library.Out()), S_OK);
    Bstr name, help;
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetDocumentation(MEMBERID_NIL, name.Out(), help.Out(), nullptr, nullptr), S_OK);
    EXPECT_STREQ(name.Get(), L"ZEL_BRULib");
    EXPECT_STREQ(help.Get(), L"ZEL_BRU 1.0 Type Library");
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_TRUE(attributes->guid == LIBID_ZEL_BRULib);
    EXPECT_EQ(attributes->lcid, 0x409u);
    EXPECT_EQ(attributes->syskind, SYS_WIN32);
    EXPECT_EQ(attributes->wMajorVerNum, 1);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    library->ReleaseTLibAttr(attributes);
    EXPECT_EQ(library->GetTypeInfoCount(), 8u);
}

}  // namespace
}  // namespace zel
