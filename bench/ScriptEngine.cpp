#include "ScriptEngine.h"

#include <cstdio>
#include <cstdlib>

#include "zel/com/Object.h"

namespace zel {
namespace {

void Check(HRESULT result, const wchar_t* what) {
    if (SUCCEEDED(result)) return;
    std::fprintf(stderr, "bench: %ls: %lx\n", what, static_cast<unsigned long>(result));
    std::exit(1);
}

// The least that an engine asks of its host.
class Site final : public Object<Interfaces<IActiveScriptSite>, IActiveScriptSite> {
public:
    STDMETHODIMP GetLCID(LCID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetItemInfo(LPCOLESTR, DWORD, IUnknown**, ITypeInfo**) override {
        return TYPE_E_ELEMENTNOTFOUND;
    }
    STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
    STDMETHODIMP OnScriptError(IActiveScriptError* error) override {
        EXCEPINFO info = {};
        DWORD context = 0;
        ULONG line = 0;
        LONG column = 0;
        error->GetExceptionInfo(&info);
        error->GetSourcePosition(&context, &line, &column);
        std::fprintf(stderr, "bench: line %lu of a script: %lx %ls\n", line,
                     static_cast<unsigned long>(info.scode), info.bstrDescription);
        std::exit(1);
    }
    STDMETHODIMP OnEnterScript() override { return S_OK; }
    STDMETHODIMP OnLeaveScript() override { return S_OK; }
};

}  // namespace

ScriptEngine::ScriptEngine(const wchar_t* name, const std::wstring& text) : name_(name) {
    CLSID clsid;
    Check(CLSIDFromProgID(name, &clsid), name);
    Check(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript, engine_.OutVoid()), name);
    Check(engine_->SetScriptSite(Make<Site>().Get()), name);
    const ComPtr<IActiveScriptParse> parser = engine_.As<IActiveScriptParse>();
    Check(parser->InitNew(), name);
    Check(parser->ParseScriptText(text.c_str(), nullptr, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISVISIBLE,
                                  nullptr, nullptr),
          name);
    Check(engine_->SetScriptState(SCRIPTSTATE_CONNECTED), name);
    Check(engine_->GetScriptDispatch(nullptr, functions_.Out()), name);
}

ScriptEngine::~ScriptEngine() { engine_->Close(); }

Variant ScriptEngine::Call(const wchar_t* function, const Variant& first, LONG second) const {
    auto* name = const_cast<wchar_t*>(function);
    DISPID id = DISPID_UNKNOWN;
    Check(functions_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), function);
    VARIANT lastFirst[] = {Variant::Int(second).Get(), first.Get()};
    DISPPARAMS arguments{lastFirst, nullptr, first.Type() == VT_EMPTY ? 0u : 2u, 0};
    Variant value;
    Check(functions_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, value.Out(),
                             nullptr, nullptr),
          function);
    return value;
}

}  // namespace zel
