#pragma once

#include <windows.h>
#include <objbase.h>

#include <string>

#include "ZEL_BRU.h"

namespace zel {

// Where the build put a file of a preset, as seen from this program in its tests/module folder.
inline std::wstring BuiltFile(const wchar_t* name) {
    wchar_t self[MAX_PATH], path[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    const std::wstring file = std::wstring(self) + L"\\..\\..\\..\\" + name;
    GetFullPathNameW(file.c_str(), MAX_PATH, path, nullptr);
    return path;
}

// The module, loaded from a file as regsvr32 does it.
class Server {
public:
    explicit Server(const std::wstring& file = BuiltFile(L"ZEL_BRU.dll"))
        : module_(LoadLibraryW(file.c_str())) {}
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server() { FreeLibrary(module_); }

    HRESULT Register() const { return Call("DllRegisterServer"); }
    HRESULT Unregister() const { return Call("DllUnregisterServer"); }
    HRESULT CanUnloadNow() const { return Call("DllCanUnloadNow"); }

private:
    HRESULT Call(const char* name) const {
        void* address = reinterpret_cast<void*>(GetProcAddress(module_, name));
        return reinterpret_cast<HRESULT(WINAPI*)()>(address)();
    }

    HMODULE module_;
};

// COM for the time of a test.
struct ComScope {
    ComScope() { CoInitialize(nullptr); }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;
    ~ComScope() { CoUninitialize(); }
};

// The manifest beside the module in force: its classes can be created although nothing is registered.
class ManifestScope {
public:
    ManifestScope() {
        const std::wstring manifest = BuiltFile(L"ZEL_BRU.manifest");
        ACTCTXW source = {};
        source.cbSize = sizeof source;
        source.lpSource = manifest.c_str();
        context_ = CreateActCtxW(&source);
        ActivateActCtx(context_, &cookie_);
    }
    ManifestScope(const ManifestScope&) = delete;
    ManifestScope& operator=(const ManifestScope&) = delete;
    ~ManifestScope() {
        DeactivateActCtx(0, cookie_);
        ReleaseActCtx(context_);
    }

private:
    HANDLE context_;
    ULONG_PTR cookie_ = 0;
};

}  // namespace zel
