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

inline std::filesystem::path BuiltFile(const char* name) {
    return std::filesystem::absolute(ZEL_BUILD / std::filesystem::u8path(name)).make_preferred();
}

// What a dump must be.
inline std::string Expected(const char* name) {
    std::ifstream file(std::filesystem::path(ZEL_EXPECTED) / name);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The module, loaded from a file as regsvr32 does it.
class Server {
public:
    explicit Server(const std::filesystem::path& file = BuiltFile("ZEL_BRU.dll"))
        : module_(LoadLibraryW(file.c_str())) {}
    Server(const Server&) = delete;
    ~Server() { FreeLibrary(module_); }

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
