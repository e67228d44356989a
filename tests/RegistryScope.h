#pragma once

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

namespace zel {

inline std::string ToUtf8(const std::wstring& text) {
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), &bytes[0],
                                     static_cast<int>(bytes.size()), nullptr, nullptr));
    return bytes;
}

// While it lives, the classes root of this process is an empty key of its own, which is gone afterwards.
class RegistryScope {
public:
    RegistryScope() : path_(L"Software\\ZEL_BRU test " + std::to_wstring(GetCurrentProcessId())) {
        RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
        RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &root_,
                        nullptr);
        RegOverridePredefKey(HKEY_CLASSES_ROOT, root_);
    }
    ~RegistryScope() {
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        RegCloseKey(root_);
        RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
    }

    // A key that refuses to get lasting ones below it.
    void Block(const wchar_t* key) {
        HKEY made = nullptr;
        RegCreateKeyExW(root_, key, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &made, nullptr);
        RegCloseKey(made);
    }

    // Every key below `top` as "key" and every value as "key|name=data", sorted.
    std::vector<std::string> Tree(const wchar_t* top = L"") const {
        std::vector<std::string> lines;
        AddKey(top, lines);
        std::sort(lines.begin(), lines.end());
        return lines;
    }

private:
    void AddKey(const std::wstring& path, std::vector<std::string>& lines) const {
        HKEY key = nullptr;
        if (RegOpenKeyExW(root_, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
        wchar_t name[256];
        DWORD length = 256;
        if (!path.empty()) lines.push_back(ToUtf8(path));
        for (DWORD i = 0; AddValue(key, i, path, lines); ++i) continue;
        for (DWORD i = 0; RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) == 0;
             ++i) {
            AddKey(path.empty() ? name : path + L"\\" + name, lines);
            length = 256;
        }
        RegCloseKey(key);
    }

    static bool AddValue(HKEY key, DWORD index, const std::wstring& path, std::vector<std::string>& lines) {
        wchar_t name[256];
        wchar_t data[1024] = {};
        DWORD length = 256, size = sizeof data, type = 0;
        if (RegEnumValueW(key, index, name, &length, nullptr, &type, reinterpret_cast<BYTE*>(data), &size) !=
            0)
            return false;
        const std::wstring text =
            type == REG_SZ ? data : L"dword:" + std::to_wstring(data[0] | DWORD{data[1]} << 16);
        lines.push_back(ToUtf8(path + L"|" + name + L"=" + text));
        return true;
    }

    std::wstring path_;
    HKEY root_ = nullptr;
};

}  // namespace zel
