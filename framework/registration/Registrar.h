#pragma once

#include <windows.h>

#include <string_view>

namespace zel {

// Writes the module into the classes root and takes it out again, as its registry scripts say
// (RegistryScript.h).
class Registrar {
public:
    // Every row's script, then the type library; stops at the first failure and returns it. What was written
    // until then stays, and the next call that gets through heals it.
    static HRESULT RegisterModule() noexcept;
    // Every row's script, whatever fails. The type library stays registered.
    static void UnregisterModule() noexcept;

    // One script. A malformed one gives ERROR_INVALID_DATA, before anything is written.
    static HRESULT Register(std::wstring_view script, std::wstring_view module) noexcept;
    // Goes on where something is refused, and returns the first refusal. What is not there is no failure.
    static HRESULT Unregister(std::wstring_view script, std::wstring_view module) noexcept;
};

}  // namespace zel
