#include <gtest/gtest.h>

#include <cstring>

#include "Server.h"

namespace zel {
namespace {

// Both modules where both are built: resources can be read whatever processor they are for.
std::vector<std::wstring> BuiltModules() {
    std::vector<std::wstring> files;
    for (const wchar_t* name : {L"..\\windows-x64\\ZEL_BRU.dll", L"..\\windows-x86\\ZEL_BRU.dll"}) {
        const std::wstring file = BuiltFile(name);
        if (GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES) files.push_back(file);
    }
    return files;
}

class ResourceTest : public testing::TestWithParam<std::wstring> {
protected:
    HMODULE module_ = LoadLibraryExW(GetParam().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ~ResourceTest() override { FreeLibrary(module_); }

    std::string Load(UINT number, const wchar_t* type) {
        const HRSRC found = FindResourceW(module_, MAKEINTRESOURCEW(number), type);
        if (!found) return "";
        const void* bytes = LockResource(LoadResource(module_, found));
        return std::string(static_cast<const char*>(bytes), SizeofResource(module_, found));
    }
};

TEST_P(ResourceTest, HoldsBitmapNameScriptsAndLibrary) {
    BITMAPINFOHEADER bitmap = {};
    const std::string image = Load(101, MAKEINTRESOURCEW(2));
    std::memcpy(&bitmap, image.data(), std::min(image.size(), sizeof bitmap));
    EXPECT_EQ(bitmap.biWidth, 16);
    EXPECT_EQ(bitmap.biHeight, 16);
    EXPECT_EQ(bitmap.biBitCount, 4);
    wchar_t name[16] = {};
    LoadStringW(module_, 100, name, 16);
    EXPECT_STREQ(name, L"ZEL_BRU");
    const char* classes[] = {"BRU_Store", "ZEL_Header", "ZEL_Collection", "ZEL_Definition"};
    for (UINT i = 0; i < 4; ++i) {
        EXPECT_NE(Load(102 + i, L"REGISTRY").find("ZEL_BRU." + std::string(classes[i])), std::string::npos);
    }
    EXPECT_EQ(Load(1, L"TYPELIB").substr(0, 4), "MSFT");
}

TEST_P(ResourceTest, StatesItsVersion) {
    std::string block(GetFileVersionInfoSizeW(GetParam().c_str(), nullptr), '\0');
    ASSERT_TRUE(GetFileVersionInfoW(GetParam().c_str(), 0, static_cast<DWORD>(block.size()), &block[0]));
    void* found = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", &found, &size));
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    for (DWORD high : {fixed->dwFileVersionMS, fixed->dwProductVersionMS}) EXPECT_EQ(high, 0x00010000u);
    for (DWORD low : {fixed->dwFileVersionLS, fixed->dwProductVersionLS}) EXPECT_EQ(low, 741u << 16);
    const struct {
        const wchar_t *name, *text;
    } strings[] = {{L"FileDescription", L"ZEL_BRU Module"}, {L"ProductName", L"ZEL_BRU Module"},
                   {L"InternalName", L"ZEL_BRU"},           {L"OriginalFilename", L"ZEL_BRU.DLL"},
                   {L"FileVersion", L"1.0.741.0"},          {L"ProductVersion", L"1.0.741.0"}};
    for (const auto& string : strings) {
        const std::wstring path = std::wstring(L"\\StringFileInfo\\040904B0\\") + string.name;
        ASSERT_TRUE(VerQueryValueW(block.data(), path.c_str(), &found, &size)) << string.name;
        EXPECT_STREQ(static_cast<const wchar_t*>(found), string.text);
    }
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\VarFileInfo\\Translation", &found, &size));
    EXPECT_EQ(*static_cast<const DWORD*>(found), 0x04B00409u);
}

INSTANTIATE_TEST_SUITE_P(Built, ResourceTest, testing::ValuesIn(BuiltModules()));

}  // namespace
}  // namespace zel
