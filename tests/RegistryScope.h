#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace zel {

inline std::string ToUtf8(const std::filesystem::path& text) { return text.u8string(); }

// While it lives, the classes root of this process is an empty key of its own, which is gone afterwards.
class RegistryScope {
public:
    RegistryScope() : path_(L"Software\\ZEL_BRU test " + std::to_wstring(GetCurrentProcessId())) {
        RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
        RegCreateKeyW(HKEY_CURRENT_USER, path_.c_str(), &root_);
        RegOverridePredefKey(HKEY_CLASSES_ROOT, root_);
    }
    ~RegistryScope() {
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        RegCloseKey(root_);
        RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
    }

    // A key that refuses to get lasting ones below it.
    void Block(const wchar_t* name) {
        HKEY key = nullptr;
        RegCreateKeyExW(root_, name, 0, nullptr, REG_OPTION_VOLATILE, KEY_READ, nullptr, &key, nullptr);
        RegCloseKey(key);
    }

    // Every key, indented below the one it is in, after that one's values: "Key", "name=text", "@=default".
    std::string Tree() const { return ToUtf8(TreeOf(root_, L"")); }

private:
    static std::wstring TreeOf(HKEY key, const std::wstring& indent) {
        std::wstring tree;
        wchar_t name[256], text[1024] = {};
        for (DWORD i = 0, length = 256, size = sizeof text, type = 0;
             !RegEnumValueW(key, i, name, &length, nullptr, &type, reinterpret_cast<BYTE*>(text), &size);
             ++i, length = 256, size = sizeof text) {
            const DWORD number = text[0] | DWORD{text[1]} << 16;
            const std::size_t end = size / sizeof *text - 1;
            const std::wstring kept =
                text[end] == L'\0' ? std::wstring(text, end) : L"a text without its NUL";
            tree += indent + (*name ? name : L"@") + L"=" +
                    (type == REG_SZ ? kept : std::to_wstring(number)) + L"\n";
        }
        for (DWORD i = 0; !RegEnumKeyW(key, i, name, 256); ++i) {
            HKEY below = nullptr;
            RegOpenKeyExW(key, name, 0, KEY_READ, &below);
            tree += indent + name + L"\n" + TreeOf(below, indent + L"    ");
            RegCloseKey(below);
        }
        return tree;
    }

    std::wstring path_;
    HKEY root_ = nullptr;
};

}  // namespace zel
