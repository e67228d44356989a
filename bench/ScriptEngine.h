#pragma once

#include <windows.h>
#include <activscp.h>

#include <string>

#include "zel/com/ComPtr.h"
#include "zel/com/Variant.h"

namespace zel {

// One of the system's script engines, with the functions of a text. The program ends when a script fails.
class ScriptEngine {
public:
    ScriptEngine(const wchar_t* name, const std::wstring& text);
    ScriptEngine(const ScriptEngine&) = delete;
    ScriptEngine& operator=(const ScriptEngine&) = delete;
    ~ScriptEngine();

    const wchar_t* Name() const { return name_; }

    // Calls a function, with its first argument first.
    Variant Call(const wchar_t* function, const Variant& first = {}, LONG second = 0) const;

private:
    const wchar_t* name_;
    ComPtr<IActiveScript> engine_;
    ComPtr<IDispatch> functions_;
};

}  // namespace zel
