// The platform's type information is the judge of late-bound calls: what an object answers to a name or a
// call is what the description of its interface answers with a twin of it.

#include <cwctype>
#include <filesystem>
#include <functional>
#include <sstream>

#include "Client.h"
#include "zel/com/TypeLibrary.h"

namespace zel {
namespace {

// Two objects of one class, the description of their interface and the twin as that is called by it.
struct Subject {
    template <class Class, class Interface>
    static Subject Of() {
        const ComPtr<Class> object = Make<Class>(), twin = Make<Class>();
        Subject made{ComPtr<IDispatch>(object.Get()), ComPtr<IDispatch>(twin.Get()), {}, {}, {}, {}};
        EXPECT_EQ(S_OK, TypeLibrary::GetInfo(__uuidof(Interface), made.info.Out()));
        made.calledTwin = static_cast<Interface*>(twin.Get());
        // What the collection does to its arguments first is its own, not the platform's.
        made.ask = [object = object.Get()](auto... arguments) {
            if constexpr (std::is_same_v<Class, ZEL_Collection>)
                return object->Dispatch<Interface>::Invoke(arguments...);
            else
                return object->Invoke(arguments...);
        };
        made.knows = [](const wchar_t* name) { return MembersOf<Interface>::kMembers.Find(name) != nullptr; };
        return made;
    }

    ComPtr<IDispatch> object, twin;
    ComPtr<ITypeInfo> info;
    void* calledTwin;
    std::function<HRESULT(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*)> ask;
    bool (*knows)(const wchar_t* name);  // without asking the platform
};

std::vector<Subject> Subjects() {
    std::vector<Subject> subjects;
    subjects.push_back(Subject::Of<BRU_Store, IBRU_Store>());
    subjects.push_back(Subject::Of<ForeignHeader, IZEL_Header>());
    subjects.push_back(Subject::Of<ZEL_Header, IZEL_Header>());
    subjects.push_back(Subject::Of<ZEL_Collection, IZEL_Collection>());
    subjects.push_back(Subject::Of<ZEL_Definition, IZEL_Definition>());
    return subjects;
}

// Calls `each` with the description of every function of the interface itself, not of those it is based on.
template <class Each>
void ForEachFunction(ITypeInfo& info, Each each) {
    FUNCDESC* function = nullptr;
    for (UINT i = 0; info.GetFuncDesc(i, &function) == S_OK; ++i) {
        if (function->oVft >= static_cast<SHORT>(7 * sizeof(void*))) each(*function);
        info.ReleaseFuncDesc(function);
    }
}

// The name of a function, and those of its arguments.
std::vector<std::wstring> NamesOf(ITypeInfo& info, const FUNCDESC& function) {
    Bstr names[4];
    UINT count = 0;
    info.GetNames(function.memid, names[0].Out(), 4, &count);
    std::vector<std::wstring> all;
    for (UINT i = 0; i < count; ++i) all.emplace_back(names[i].Get());
    return all;
}

// Runs in a folder of its own: some calls save a file.
class LateBound : public AutomationTest {
protected:
    LateBound() {
        std::filesystem::create_directory(kFolder);
        std::filesystem::current_path(kFolder);
    }
    ~LateBound() override {
        std::filesystem::current_path("..");
        std::filesystem::remove_all(kFolder);
    }

private:
    static constexpr char kFolder[] = "late_bound.tmp";
};

void ExpectSameIds(const Subject& subject, std::vector<const wchar_t*> names) {
    const UINT count = static_cast<UINT>(names.size());
    names.push_back(L"");  // there is a first name even where none counts
    auto** list = const_cast<wchar_t**>(names.data());
    DISPID ids[] = {77, 77, 77, 77}, judged[] = {77, 77, 77, 77};
    const HRESULT result = subject.object->GetIDsOfNames(IID_NULL, list, count, LOCALE_USER_DEFAULT, ids);
    EXPECT_EQ(subject.info->GetIDsOfNames(list, count, judged), result) << names[0] << " of " << count;
    EXPECT_TRUE(std::equal(std::begin(ids), std::end(ids), judged)) << names[0] << " of " << count;
}

void ExpectSameIdsOfFunction(const Subject& subject, const std::vector<std::wstring>& names) {
    const wchar_t* name = names[0].c_str();
    std::wstring other = names[0];
    for (wchar_t& letter : other) letter = static_cast<wchar_t>(letter ^ (std::iswalpha(letter) ? 0x20 : 0));
    const std::wstring wide = wchar_t(name[0] + 0xfee0) + names[0].substr(1);
    EXPECT_TRUE(subject.knows(name)) << name;
    ExpectSameIds(subject, {});
    ExpectSameIds(subject, {name});
    ExpectSameIds(subject, {other.c_str()});
    ExpectSameIds(subject, {wide.c_str()});
    ExpectSameIds(subject, {(names[0] + L"x").c_str()});
    ExpectSameIds(subject, {(names[0] + std::wstring(63, L'x') + names[0].back()).c_str()});  // same slot
    ExpectSameIds(subject, {(names[0] + L"\x00ad").c_str()});
    ExpectSameIds(subject, {(names[0] + L'\x0301').c_str()});
    ExpectSameIds(subject, {names[0].substr(1).c_str()});
    for (const auto& argument : names) {
        ExpectSameIds(subject, {argument.c_str()});
        ExpectSameIds(subject, {other.c_str(), argument.c_str()});
        ExpectSameIds(subject, {name, L"nothing", argument.c_str()});
        ExpectSameIds(subject, {L"nothing", argument.c_str()});
    }
}

void ExpectSameIdsOfAllNames(const Subject& subject) {
    ForEachFunction(*subject.info.Get(), [&](const FUNCDESC& function) {
        ExpectSameIdsOfFunction(subject, NamesOf(*subject.info.Get(), function));
    });
    for (const wchar_t* name :
         {L"", L"nothing", L"AddRef", L"invoke", L"pVal", L"Flag\x017f", L"T\x00fdpe", L"F\x0131llColor",
          L"F\x0130LLCOLOR", L"Item\x200b", L"I\ttem", L"_", L"@COUNT"})
        ExpectSameIds(subject, {name});
    ExpectSameIds(subject, {nullptr});
}

TEST_F(LateBound, NamesAreThoseOfThePlatformInAnyLanguage) {
    const LCID before = GetThreadLocale();
    for (const LCID language : {0x409, 0x41f, 0x427}) {  // English, Turkish, Lithuanian
        SetThreadLocale(language);
        for (const Subject& subject : Subjects()) ExpectSameIdsOfAllNames(subject);
    }
    SetThreadLocale(before);
}

// A call: arguments as they stand in the array, the last first.
struct Form {
    WORD flags;
    std::vector<VARIANT> arguments;
    std::vector<DISPID> named;
    bool hasArguments = true, hasValue = true, hasException = true, hasBadArgument = true;
};

VARIANT Typed(int type, ULONGLONG bits = 0) {
    VARIANT variant = {};
    V_VT(&variant) = static_cast<VARTYPE>(type);
    V_UI8(&variant) = bits;
    return variant;
}
template <class Pointer>
VARIANT Typed(int type, Pointer* pointer) {
    return Typed(type, reinterpret_cast<ULONGLONG>(pointer));
}

// What a VARIANT holds; of an object or a reference, that there is one.
std::wstring Shown(const VARIANT& value) {
    const VARTYPE type = V_VT(&value);
    const std::wstring start = L"type " + std::to_wstring(type) + L' ';
    if (type == VT_R8) return start + std::to_wstring(V_UI8(&value));
    if (type != VT_UI1 && type != VT_UI2 && type != VT_I4 && type != VT_BSTR)
        return start + (type > VT_NULL && V_BYREF(&value) ? L"1" : L"0");
    Variant copy;
    CopyVariant(copy.InOut(), value);
    return start + AsText(std::move(copy));
}

// All that the call leaves behind, as text.
std::wstring AnswerTo(
    const Form& form, DISPID member,
    const std::function<HRESULT(DISPID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*)>& call) {
    std::vector<VARIANT> arguments = form.arguments;
    std::vector<DISPID> named = form.named;
    DISPPARAMS list{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                    static_cast<UINT>(named.size())};
    VARIANT value = Typed(VT_I4, 77);
    EXCEPINFO exception = {};
    UINT badArgument = 77;
    const HRESULT result =
        call(member, form.flags, form.hasArguments ? &list : nullptr, form.hasValue ? &value : nullptr,
             form.hasException ? &exception : nullptr, form.hasBadArgument ? &badArgument : nullptr);
    std::wostringstream text;
    text << std::hex << result << ", value " << Shown(value) << ", bad argument " << badArgument
         << ", exception " << exception.scode;
    for (const VARIANT& argument : arguments) text << ", argument " << Shown(argument);
    VariantClear(&value);
    DISPPARAMS none = {};
    call(member, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr);
    text << ", then " << Shown(value);
    VariantClear(&value);
    return text.str();
}

// What arguments refer to.
struct Referred {
    ComPtr<ZEL_Collection> collection = Make<ZEL_Collection>();
    ComPtr<ZEL_Header> header = Make<ZEL_Header>();
    VARIANT variable = Typed(VT_I4, 7);
    LONG number = 7;
    BYTE byte = 7;
    double fraction = 2.5;
    Bstr digits = Bstr(L"12"), word = Bstr(L"word");
};

// Arguments of all kinds.
std::vector<VARIANT> Arguments(Referred& referred) {
    const auto object = [](IDispatch* one) { return Typed(VT_DISPATCH, one); };
    // clang-format off
    return {
        Typed(VT_EMPTY), Typed(VT_NULL), Typed(VT_ERROR, ULONGLONG{0x80020004} /* missing */), Typed(200),
        Typed(VT_UI1, 255), Typed(VT_I2, 0x7ead0007), Typed(VT_I2, 0xffff), Typed(VT_UI2, 65535),
        Typed(VT_I4, 7), Typed(VT_I4, 256), Typed(VT_I4, 65536), Typed(VT_I4, 0xffffffff),
        Typed(VT_UI4, 0xffffffff), Typed(VT_I8, 7), Typed(VT_R4, 0x40200000),
        Typed(VT_R8, 0x4004000000000000), Typed(VT_R8, 0x7fefffffffffffff),
        Typed(VT_CY, 70000), Typed(VT_DATE, 0x4004000000000000), Typed(VT_BOOL, 0xffff),
        Typed(VT_BSTR, referred.digits.Get()), Typed(VT_BSTR, referred.word.Get()), Typed(VT_BSTR),
        object(referred.collection.Get()), object(referred.header.Get()), object(nullptr), Typed(VT_UNKNOWN),
        Typed(VT_BYREF | VT_VARIANT, &referred.variable), Typed(VT_BYREF | VT_I4, &referred.number),
        Typed(VT_BYREF | VT_UI1, &referred.byte), Typed(VT_BYREF | VT_R8, &referred.fraction),
        Typed(VT_BYREF | VT_BSTR, referred.digits.InOut())};
    // clang-format on
}

std::vector<Form> Forms(Referred& referred) {
    constexpr WORD kGet = DISPATCH_PROPERTYGET, kPut = DISPATCH_PROPERTYPUT, kCall = DISPATCH_METHOD;
    std::vector<Form> forms;
    for (const WORD flags :
         {0, +kGet, +kPut, +kCall, kGet | kCall, kGet | kPut, +DISPATCH_PROPERTYPUTREF, 16}) {
        forms.push_back({flags, {}, {}});
        forms.push_back({flags, {}, {}, false});
        forms.push_back({flags, {}, {}, true, false});
        forms.push_back({flags, {}, {DISPID_PROPERTYPUT}});
        for (const VARIANT& argument : Arguments(referred)) {
            forms.push_back({flags, {argument}, {}});
            forms.push_back({flags, {argument}, {DISPID_PROPERTYPUT}});
        }
        const VARIANT number = Typed(VT_I4, 7), nothing = Typed(VT_DISPATCH);
        for (const DISPID name : {0, 1, 99}) forms.push_back({flags, {number}, {name}});
        forms.push_back({flags, {number, number}, {}});
        forms.push_back({flags, {number, number}, {DISPID_PROPERTYPUT}});
        forms.push_back({flags, {nothing}, {DISPID_PROPERTYPUT}, true, false, false, false});
    }
    return forms;
}

TEST_F(LateBound, CallsAnswerAsThePlatformDoes) {
    Referred referred;
    const std::vector<Form> forms = Forms(referred);
    for (const Subject& subject : Subjects()) {
        const auto ask = [&](DISPID id, WORD flags, auto... rest) {
            return subject.ask(id, IID_NULL, LOCALE_USER_DEFAULT, flags, rest...);
        };
        const auto judge = [&](DISPID id, WORD flags, auto... rest) {
            // A put by reference is a put.
            if (flags & DISPATCH_PROPERTYPUTREF) flags |= DISPATCH_PROPERTYPUT;
            return subject.info->Invoke(subject.calledTwin, id, flags, rest...);
        };
        std::vector<DISPID> members = {DISPID_UNKNOWN, DISPID_VALUE, 99};
        ForEachFunction(*subject.info.Get(),
                        [&](const FUNCDESC& function) { members.push_back(function.memid); });
        for (const DISPID member : members) {
            for (const Form& form : forms)
                EXPECT_EQ(AnswerTo(form, member, judge), AnswerTo(form, member, ask))
                    << "member " << member << ", flags " << form.flags << ", argument "
                    << (form.arguments.empty() ? L"none" : Shown(form.arguments[0])) << ", named "
                    << form.named.size();
        }
    }
}

TEST_F(LateBound, DescriptionThatCouldNotBeHadIsAskedForAgain) {
    const auto header = Make<ZEL_Header>();
    ComPtr<ITypeInfo> info;
    TypeLibrary::Unload();
    Module::Attach(reinterpret_cast<HINSTANCE>(1), nullptr, 0);  // has no file
    EXPECT_TRUE(FAILED(header->GetTypeInfo(0, 0, info.Out())));
    EXPECT_EQ(L"64", Get(*header, L"TarnVersion"));  // needs no description
    Module::Attach(nullptr, nullptr, 0);
    EXPECT_EQ(S_OK, header->GetTypeInfo(0, 0, info.Out()));
}

}  // namespace
}  // namespace zel
