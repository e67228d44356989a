#include "Registrar.h"

#include <string>

#include "zel/com/Boundary.h"
#include "zel/com/Module.h"
#include "RegistryScript.h"
#include "zel/com/TypeLibrary.h"

namespace zel {
namespace {

// An open key of the classes root, or an error to look at.
class OpenKey {
public:
    OpenKey() = default;
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey() {
        if (key_) RegCloseKey(key_);
    }

    LONG Create(const std::wstring& path) {
        return RegCreateKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr,
                               &key_, nullptr);
    }
    LONG Open(const std::wstring& path) {
        return RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ | KEY_WRITE, &key_);
    }

    LONG Set(const RegistryValue& value) const {
        const bool isText = value.type == REG_SZ;
        const void* data = isText ? static_cast<const void*>(value.text.c_str()) : &value.number;
        const std::size_t size = isText ? (value.text.size() + 1) * sizeof(wchar_t) : sizeof value.number;
        return RegSetValueExW(key_, value.name.c_str(), 0, value.type, static_cast<const BYTE*>(data),
                              static_cast<DWORD>(size));
    }
    LONG Remove(const RegistryValue& value) const { return RegDeleteValueW(key_, value.name.c_str()); }

    // Empty when there is none.
    std::wstring FirstSubkey() const {
        wchar_t name[256];
        DWORD length = 256;
        const LONG error = RegEnumKeyExW(key_, 0, name, &length, nullptr, nullptr, nullptr, nullptr);
        return error == ERROR_SUCCESS ? std::wstring(name, length) : std::wstring();
    }

private:
    HKEY key_ = nullptr;
};

bool IsGone(LONG error) { return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND; }

// Leaf by leaf, from below: a key with subkeys cannot be deleted everywhere.
LONG RemoveTree(std::wstring path) {
    const std::size_t top = path.size();
    for (;;) {
        std::wstring below;
        {
            OpenKey key;
            const LONG error = key.Open(path);
            if (error != ERROR_SUCCESS) return IsGone(error) ? ERROR_SUCCESS : error;
            below = key.FirstSubkey();
        }
        if (!below.empty()) {
            path += L'\\' + below;
            continue;
        }
        const LONG error = RegDeleteKeyW(HKEY_CLASSES_ROOT, path.c_str());
        if (error != ERROR_SUCCESS || path.size() == top) return error;
        path.resize(path.rfind(L'\\'));
    }
}

LONG WriteKey(const RegistryKey& description) {
    LONG error = ERROR_SUCCESS;
    if (description.removal == Removal::kForceRemove) error = RemoveTree(description.path);
    if (error != ERROR_SUCCESS) return error;
    OpenKey key;
    error = key.Create(description.path);
    for (const RegistryValue& value : description.values) {
        if (error == ERROR_SUCCESS) error = key.Set(value);
    }
    return error;
}

// What others put below a plain key stays, and the key with it, without our values.
LONG RemovePlain(const RegistryKey& description) {
    {
        OpenKey key;
        LONG error = key.Open(description.path);
        if (error != ERROR_SUCCESS) return IsGone(error) ? ERROR_SUCCESS : error;
        if (!key.FirstSubkey().empty()) {
            for (const RegistryValue& value : description.values) {
                const LONG refused = key.Remove(value);
                if (refused != ERROR_SUCCESS && !IsGone(refused)) error = refused;
            }
            return error;
        }
    }
    return RegDeleteKeyW(HKEY_CLASSES_ROOT, description.path.c_str());
}

LONG RemoveKey(const RegistryKey& description) {
    if (description.removal == Removal::kNoRemove) return ERROR_SUCCESS;
    return description.removal == Removal::kForceRemove ? RemoveTree(description.path)
                                                        : RemovePlain(description);
}

// The text of a script resource, which is in the ANSI code page.
HRESULT LoadScript(UINT number, std::wstring& text) {
    const HINSTANCE instance = Module::Instance();
    const HRSRC found = FindResourceW(instance, MAKEINTRESOURCEW(number), L"REGISTRY");
    const HGLOBAL loaded = found ? LoadResource(instance, found) : nullptr;
    const auto* bytes = static_cast<const char*>(loaded ? LockResource(loaded) : nullptr);
    if (!bytes) return HRESULT_FROM_WIN32(GetLastError());
    const int size = static_cast<int>(SizeofResource(instance, found));
    text.resize(size);
    text.resize(MultiByteToWideChar(CP_ACP, 0, bytes, size, &text[0], size));
    return S_OK;
}

using Run = HRESULT (*)(std::wstring_view script, std::wstring_view module) noexcept;

HRESULT RunScript(const ClassRow& row, Run run) noexcept {
    return Boundary(
        [&]() -> HRESULT {
            wchar_t path[MAX_PATH];
            std::wstring script;
            HRESULT result = Module::GetPath(path);
            if (SUCCEEDED(result)) result = LoadScript(row.script, script);
            return SUCCEEDED(result) ? run(script, path) : result;
        },
        E_OUTOFMEMORY);
}

}  // namespace

HRESULT Registrar::Register(std::wstring_view text, std::wstring_view module) noexcept {
    return Boundary(
        [&]() -> HRESULT {
            RegistryScript script;
            if (!script.Parse(text, module)) return HRESULT_FROM_WIN32(ERROR_INVALID_DATA);
            for (const RegistryKey& key : script.keys) {
                const LONG error = WriteKey(key);
                if (error != ERROR_SUCCESS) return HRESULT_FROM_WIN32(error);
            }
            return S_OK;
        },
        E_OUTOFMEMORY);
}

HRESULT Registrar::Unregister(std::wstring_view text, std::wstring_view module) noexcept {
    return Boundary(
        [&]() -> HRESULT {
            RegistryScript script;
            if (!script.Parse(text, module)) return HRESULT_FROM_WIN32(ERROR_INVALID_DATA);
            LONG failure = ERROR_SUCCESS;
            // From below: a key goes after those in it.
            for (auto key = script.keys.rbegin(); key != script.keys.rend(); ++key) {
                const LONG error = RemoveKey(*key);
                if (failure == ERROR_SUCCESS) failure = error;
            }
            return HRESULT_FROM_WIN32(failure);
        },
        E_OUTOFMEMORY);
}

HRESULT Registrar::RegisterModule() noexcept {
    for (const ClassRow* row = Module::begin(); row != Module::end(); ++row) {
        const HRESULT result = RunScript(*row, &Register);
        if (FAILED(result)) return result;
    }
    return TypeLibrary::Register();
}

void Registrar::UnregisterModule() noexcept {
    for (const ClassRow* row = Module::begin(); row != Module::end(); ++row) RunScript(*row, &Unregister);
}

}  // namespace zel
