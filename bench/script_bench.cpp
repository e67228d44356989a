// The module as a script sees it: what names, calls and loop turns cost, beside the same through the
// platform's type information and beside the same loop on an object of the script's own.

#include <windows.h>
#include <oleauto.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "BuiltModule.h"
#include "ScriptEngine.h"
#include "zel/com/Bstr.h"
#include "zel/com/Object.h"
#include "zel/com/Variant.h"

namespace zel {
namespace {

constexpr int kRepetitions = 15;
constexpr LONG kDefinitions = 1000;

// An object whose names and calls go through the platform's type information alone.
class Described final : public Object<Interfaces<IDispatch>, IDispatch> {
public:
    Described(IDispatch& object, ITypeInfo& info) : object_(&object), info_(&info) {}

    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return info_->GetIDsOfNames(names, count, ids);
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* value,
                        EXCEPINFO* exception, UINT* badArgument) override {
        // The enumerator is called as a method too.
        if (member == DISPID_NEWENUM) flags |= DISPATCH_PROPERTYGET;
        return info_->Invoke(object_.Get(), member, flags, arguments, value, exception, badArgument);
    }

private:
    ComPtr<IDispatch> object_;
    ComPtr<ITypeInfo> info_;
};

// An object of the module, and its twin that goes through its description.
struct Pair {
    template <class Interface>
    static Pair Of(REFCLSID clsid) {
        Pair made;
        // The description calls by the virtual table: the pointer has to be the interface's own.
        const ComPtr<Interface> object = Create<Interface>(clsid);
        object->GetTypeInfo(0, 0, made.info.Out());
        made.object = ComPtr<IDispatch>(object.Get());
        made.described = Make<Described>(*object.Get(), *made.info.Get());
        return made;
    }

    ComPtr<IDispatch> object, described;
    ComPtr<ITypeInfo> info;
};

double Now() {
    LARGE_INTEGER ticks, frequency;
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(ticks.QuadPart) * 1e9 / static_cast<double>(frequency.QuadPart);
}

// Nanoseconds a turn of each. In turn and repeated, so that a busy machine slows all alike; the quickest
// counts.
std::vector<double> Quickest(LONG turns, const std::vector<std::function<void(LONG turns)>>& runs) {
    std::vector<double> best(runs.size(), 1e18);
    for (int i = 0; i < kRepetitions; ++i) {
        for (std::size_t run = 0; run < runs.size(); ++run) {
            const double start = Now();
            runs[run](turns);
            best[run] = std::min(best[run], (Now() - start) / turns);
        }
    }
    return best;
}

HRESULT NameOf(IDispatch& object, const wchar_t* name, DISPID* id) {
    auto* text = const_cast<wchar_t*>(name);
    return object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, id);
}

void Look(IDispatch& object, const wchar_t* name, LONG turns) {
    DISPID id;
    for (LONG i = 0; i < turns; ++i) {
        if (NameOf(object, name, &id) != S_OK) std::abort();
    }
}

void Get(IDispatch& object, DISPID id, LONG turns) {
    for (LONG i = 0; i < turns; ++i) {
        Variant value;
        VARIANT position = Variant::Int(0).Get();
        DISPPARAMS arguments{&position, nullptr, id == DISPID_VALUE ? 1u : 0u, 0};
        if (FAILED(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET | DISPATCH_METHOD,
                                 &arguments, value.InOut(), nullptr, nullptr)))
            std::abort();
    }
}

// The names of all members, in the order of the virtual table.
std::vector<std::wstring> MembersOf(ITypeInfo& info) {
    std::vector<std::wstring> members;
    TYPEATTR* type = nullptr;
    info.GetTypeAttr(&type);
    for (UINT i = 0; i < type->cFuncs; ++i) {
        FUNCDESC* member = nullptr;
        Bstr name;
        UINT count = 0;
        info.GetFuncDesc(i, &member);
        // Those of IDispatch are described too.
        const bool isOwn = member->oVft >= static_cast<SHORT>(7 * sizeof(void*));
        info.GetNames(member->memid, name.Out(), 1, &count);
        info.ReleaseFuncDesc(member);
        if (isOwn && (members.empty() || members.back() != name.Get())) members.emplace_back(name.Get());
    }
    info.ReleaseTypeAttr(type);
    return members;
}

// What the module answers, and through its description.
std::vector<double> Times(const Pair& pair, const std::function<void(IDispatch&, LONG)>& run) {
    return Quickest(
        2000, {[&](LONG n) { run(*pair.object.Get(), n); }, [&](LONG n) { run(*pair.described.Get(), n); }});
}

void PrintRow(const std::string& who, const std::wstring& what, const std::vector<double>& times) {
    std::printf("%-12s%-30ls%8.0f", who.c_str(), what.c_str(), times[0]);
    for (std::size_t other = 1; other < times.size(); ++other) {
        if (times[other] > 0) {
            std::printf("%10.2f", times[other] / times[0]);
        } else {
            std::printf("%10s", "-");
        }
    }
    std::printf("\n");
}

void PrintNames(const std::string& who, const Pair& pair) {
    const std::vector<std::wstring> members = MembersOf(*pair.info.Get());
    std::vector<std::pair<std::wstring, std::vector<double>>> rows;
    for (const std::wstring& name : members)
        rows.emplace_back(name,
                          Times(pair, [&](IDispatch& object, LONG n) { Look(object, name.c_str(), n); }));
    for (const std::size_t row : {std::size_t{0}, rows.size() / 2, rows.size() - 1})
        PrintRow(who, L"name " + rows[row].first, rows[row].second);
    const auto slowest = std::max_element(
        rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.second[0] < b.second[0]; });
    PrintRow(who, L"slowest: " + slowest->first, slowest->second);
}

void PrintGets(const std::string& who, const Pair& pair, const std::vector<const wchar_t*>& names) {
    for (const wchar_t* name : names) {
        DISPID id = DISPID_UNKNOWN;
        NameOf(*pair.object.Get(), name, &id);
        PrintRow(who, std::wstring(L"get ") + name,
                 Times(pair, [&](IDispatch& object, LONG n) { Get(object, id, n); }));
    }
}

// What a loop turn does to the object `o`, in each language, and how that is said of the script's own object
// or array where it differs.
struct Turn {
    enum Subject { kDefinition, kDefinitions, kNone } subject;
    const wchar_t* what;
    LONG turns;
    const wchar_t *jscript, *vbscript;
    const wchar_t *nativeJScript = nullptr, *nativeVBScript = nullptr;
};

#define ZEL_FIVE(then) \
    L"v = "            \
    L"d."              \
    L"AreaCod"         \
    L"e" then L"v = d.AreaName" then L"v = d.LineColor" then L"v = d.Multiplier" then L"v = d.WallWidth"
const Turn kTurns[] = {
    {Turn::kDefinition, L"nothing", 5000, L"", L""},
    {Turn::kDefinition, L"get AreaCode", 2000, L"v = o.AreaCode", L"v = o.AreaCode"},
    {Turn::kDefinition, L"get LineColor", 2000, L"v = o.LineColor", L"v = o.LineColor"},
    {Turn::kDefinition, L"get WallWidth", 2000, L"v = o.WallWidth", L"v = o.WallWidth"},
    {Turn::kDefinition, L"put AreaCode", 2000, L"o.AreaCode = 'GLA1'", L"o.AreaCode = \"GLA1\""},
    {Turn::kDefinition, L"put LineColor", 2000, L"o.LineColor = 7", L"o.LineColor = 7"},
    {Turn::kDefinition, L"put WallWidth", 2000, L"o.WallWidth = 2.5", L"o.WallWidth = 2.5"},
    {Turn::kDefinitions, L"Item(i)", 2000, L"d = o.Item(i % 1000)", L"Set d = o.Item(i Mod 1000)",
     L"d = o[i % 1000]", L"Set d = o(i Mod 1000)"},
    {Turn::kDefinitions, L"walk 1000, read 5", 2,
     L"for (e = new Enumerator(o); !e.atEnd(); e.moveNext()) { d = e.item();" ZEL_FIVE(L";") L"}",
     L"For Each d In o\n" ZEL_FIVE(L"\n") L"\nNext",
     L"for (e = 0; e < o.length; ++e) { d = o[e];" ZEL_FIVE(L";") L"}"},
    {Turn::kNone, L"create a definition", 500, L"v = new ActiveXObject('ZEL_BRU.ZEL_Definition')",
     L"Set v = CreateObject(\"ZEL_BRU.ZEL_Definition\")", L"v = new Native()", L"Set v = New Native"},
};

// Function t3 does what turn 3 says, n3 does it to the script's own object.
std::wstring FunctionName(const Turn& turn, bool native) {
    return (native ? L"n" : L"t") + std::to_wstring(&turn - kTurns);
}

std::wstring JScript() {
    std::wstring text =
        L"function Native() { this.AreaCode = 'GLA1'; this.AreaName = ''; this.LineColor = 7;"
        L" this.Multiplier = 1.5; this.WallWidth = 2.5; }\n"
        L"function NewDefinition() { return new Native(); }\n"
        L"function NewDefinitions() { for (var i = 0, a = []; i < 1000; ++i) a.push(new Native()); return a; "
        L"}\n";
    for (const Turn& turn : kTurns) {
        for (const bool native : {false, true})
            text += L"function " + FunctionName(turn, native) +
                    L"(o, n) { var v, d, e; for (var i = 0; i < n; ++i) { " +
                    (native && turn.nativeJScript ? turn.nativeJScript : turn.jscript) + L" } }\n";
    }
    return text;
}

std::wstring VBScript() {
    std::wstring text =
        L"Class Native\nPublic AreaCode\nPublic AreaName\nPublic LineColor\nPublic Multiplier\nPublic "
        L"WallWidth\n"
        L"Private Sub Class_Initialize\nAreaCode = \"GLA1\"\nLineColor = 7\nMultiplier = 1.5\nWallWidth = "
        L"2.5\n"
        L"End Sub\nEnd Class\n"
        L"Function NewDefinition\nSet NewDefinition = New Native\nEnd Function\n"
        L"Function NewDefinitions\nDim a(999), i\nFor i = 0 To 999\nSet a(i) = New Native\nNext\n"
        L"NewDefinitions = a\nEnd Function\n";
    for (const Turn& turn : kTurns) {
        for (const bool native : {false, true})
            text += L"Sub " + FunctionName(turn, native) + L"(o, n)\nDim v, d, e, i\nFor i = 0 To n - 1\n" +
                    (native && turn.nativeVBScript ? turn.nativeVBScript : turn.vbscript) +
                    L"\nNext\nEnd Sub\n";
    }
    return text;
}

// 1000 definitions in a collection; in the twin, those that go through their description.
Pair MakeDefinitions() {
    const auto add = [](const Pair& to, IDispatch& item) {
        const Variant object = Variant::Object(&item);
        static_cast<IZEL_Collection*>(to.object.Get())->Add(object.Get());
    };
    Pair plain = Pair::Of<IZEL_Collection>(CLSID_ZEL_Collection);
    Pair described = Pair::Of<IZEL_Collection>(CLSID_ZEL_Collection);
    for (LONG i = 0; i < kDefinitions; ++i) {
        const Pair definition = Pair::Of<IZEL_Definition>(CLSID_ZEL_Definition);
        add(plain, *definition.object.Get());
        add(described, *definition.described.Get());
    }
    plain.described = std::move(described.described);
    return plain;
}

void PrintTurns(const std::string& who, const ScriptEngine& engine, const Pair& definition,
                const Pair& definitions) {
    const Variant own[] = {engine.Call(L"NewDefinition"), engine.Call(L"NewDefinitions"), Variant::Int(0)};
    for (const Turn& turn : kTurns) {
        const Pair& pair = turn.subject == Turn::kDefinitions ? definitions : definition;
        const auto run = [&](const Variant& o, bool native = false) {
            return
                [&engine, &o, name = FunctionName(turn, native)](LONG n) { engine.Call(name.c_str(), o, n); };
        };
        const Variant object = Variant::Object(pair.object.Get());
        const Variant described = Variant::Object(pair.described.Get());
        auto times = Quickest(turn.turns, {run(object), run(described), run(own[turn.subject], true)});
        if (turn.subject == Turn::kNone) times[1] = 0;  // no member of an object is called
        PrintRow(who, turn.what, times);
    }
}

void PrintAll() {
    const Pair store = Pair::Of<IBRU_Store>(CLSID_BRU_Store);
    const Pair header = Pair::Of<IZEL_Header>(CLSID_ZEL_Header);
    const Pair definition = Pair::Of<IZEL_Definition>(CLSID_ZEL_Definition);
    const Pair definitions = MakeDefinitions();
    std::printf("%-42s%8s%10s%10s\n", "scripts; how many times the others take", "ns", "type info", "native");
    PrintNames("Store", store);
    PrintNames("Header", header);
    PrintNames("Definition", definition);
    PrintNames("Collection", definitions);
    PrintGets("Store", store, {L"Header", L"DefinitionType", L"Flags"});
    PrintGets("Header", header, {L"TarnVersion", L"LastModifiedBy", L"Type"});
    PrintGets("Definition", definition, {L"AreaCode", L"LineColor", L"WallWidth"});
    PrintGets("Collection", definitions, {L"Item", L"Count", L"_NewEnum"});
    PrintTurns("JScript", ScriptEngine(L"JScript", JScript()), definition, definitions);
    PrintTurns("VBScript", ScriptEngine(L"VBScript", VBScript()), definition, definitions);
}

// Scripts create the module's objects by its manifest; nothing is registered.
void ActivateManifest() {
    ACTCTXW source = {};
    source.cbSize = sizeof source;
    source.lpSource = ZEL_MANIFEST;
    ULONG_PTR cookie = 0;
    if (!ActivateActCtx(CreateActCtxW(&source), &cookie)) std::abort();
}

}  // namespace
}  // namespace zel

int main() {
    CoInitialize(nullptr);
    zel::ActivateManifest();
    zel::PrintAll();
}
