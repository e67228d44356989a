#pragma once

#include <windows.h>
#include <comdef.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "ZEL_BRU.h"

namespace zel {

// COM is there for all tests.
inline const HRESULT kComStarted = CoInitialize(nullptr);

// Where the build put a file, as seen from a program in a folder of its tests.
inline std::filesystem::path BuiltFile(const char* name) {
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    return (std::filesystem::path(self) / "../../.." / std::filesystem::u8path(name)).lexically_normal();
}

// The text that a dump must be.
inline std::string TextOf(const char* path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The module, loaded from a file as regsvr32 does it.
class Server {
public:
    explicit Server(const std::filesystem::path& file = BuiltFile("ZEL_BRU.dll"))
        : module_(LoadLibraryW(file.c_str())) {}
    Server(const Server&) = delete;
    ~Server() { FreeLibrary(module_); }

    HRESULT Register() const { return Call("DllRegisterServer"); }
    HRESULT Unregister() const { return Call("DllUnregisterServer"); }
    HRESULT CanUnloadNow() const { return Call("DllCanUnloadNow"); }

    // Calls what it exports by that name.
    template <class... Arguments>
    HRESULT Call(const char* name, Arguments... arguments) const {
        void* entry = reinterpret_cast<void*>(GetProcAddress(module_, name));
        return reinterpret_cast<HRESULT(WINAPI*)(Arguments...)>(entry)(arguments...);
    }

private:
    HMODULE module_;
};

}  // namespace zel
