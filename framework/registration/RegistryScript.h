#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

namespace zel {

// What becomes of a key: a plain one goes on unregistering when it has no subkeys left, a kNoRemove one
// stays, a kForceRemove one goes with all that is below it, on unregistering and before it is written anew.
enum class Removal { kPlain, kNoRemove, kForceRemove };

// REG_SZ with its text or REG_DWORD with its number. The default value has no name.
struct RegistryValue {
    std::wstring name;
    DWORD type = REG_SZ;
    std::wstring text;
    DWORD number = 0;
};

struct RegistryKey {
    std::wstring path;
    Removal removal = Removal::kPlain;
    std::vector<RegistryValue> values;
};

// A script of the platform registrar's language, for the classes root:
//     HKCR { [NoRemove|ForceRemove] key [= s|d data] [{ ... }]   val name = s|d data }
// Words are set apart by blanks; one with blanks in it stands in single quotes, where '' is a quote. %MODULE%
// is the module's path, in any word, %% a percent sign.
struct RegistryScript {
    // Every key after the one it is in.
    std::vector<RegistryKey> keys;

    // False for what is no such script. Throws only when memory is exhausted.
    bool Parse(std::wstring_view text, std::wstring_view module);
};

}  // namespace zel
