// zelreg [/u] [/s] [DLL]: registers an in-process server on the handheld, or with /u takes its registration
// away; without a path, the ZEL_BRU.dll beside this program. Says what came of it, but for /s. Ends with 0,
// or as regsvr32 does on the desktop: 3 the library could not be loaded, 4 it is no such library, 5 it
// refused.
#include <windows.h>

#include <wchar.h>

namespace {

enum Exit { kDone = 0, kNotLoaded = 3, kNoServer = 4, kRefused = 5 };

struct Options {
    bool unregister = false;
    bool silent = false;
    wchar_t path[MAX_PATH] = {};
};

// The file beside this program.
void PathBeside(const wchar_t* name, wchar_t (&path)[MAX_PATH]) {
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    DWORD end = length < MAX_PATH ? length : 0;
    while (end > 0 && path[end - 1] != L'\\') --end;
    for (DWORD i = 0; end + i < MAX_PATH; ++i) {
        path[end + i] = name[i];
        if (!name[i]) return;
    }
    path[0] = L'\0';
}

void Read(const wchar_t* line, Options& options) {
    while (*line == L' ') ++line;
    while (line[0] == L'/' && line[1]) {
        options.unregister |= (line[1] | 0x20) == L'u';
        options.silent |= (line[1] | 0x20) == L's';
        for (line += 2; *line == L' ';) ++line;
    }
    const wchar_t end = *line == L'"' ? *line++ : L'\0';
    for (DWORD i = 0; *line && *line != end && i + 1 < MAX_PATH; ++i) options.path[i] = *line++;
    if (!options.path[0]) PathBeside(L"ZEL_BRU.dll", options.path);
}

Exit Run(const Options& options) {
    const HMODULE library = LoadLibraryW(options.path);
    if (!library) return kNotLoaded;
    auto* function = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(
        GetProcAddress(library, options.unregister ? "DllUnregisterServer" : "DllRegisterServer")));
    const Exit result = !function ? kNoServer : SUCCEEDED(function()) ? kDone : kRefused;
    FreeLibrary(library);
    return result;
}

const wchar_t* TextOf(Exit result, bool unregistered) {
    switch (result) {
        case kNotLoaded:
            return L"The library could not be loaded.";
        case kNoServer:
            return L"The library cannot be registered.";
        case kRefused:
            return L"The registration failed.";
        default:
            return unregistered ? L"The library is no longer registered." : L"The library is registered.";
    }
}

}  // namespace

// Where the system enters the program.
extern "C" int WINAPI ZelEntry(HINSTANCE, HINSTANCE, wchar_t* commandLine, int) {
    Options options;
    Read(commandLine, options);
    const Exit result = Run(options);
    if (!options.silent) MessageBoxW(nullptr, TextOf(result, options.unregister), options.path, MB_OK);
    ExitThread(result);
    return result;
}
