#include "Platform.h"

#ifdef _WIN32

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include <filesystem>

// Of the C library, though in none of its public headers: what starts a wmain.
extern "C" int __cdecl __wgetmainargs(int* argc, wchar_t*** argv, wchar_t*** environment, int expandPatterns,
                                      int* newMode);

namespace zel {
namespace {

std::wstring Wide(const std::string& path) { return std::filesystem::u8path(path).wstring(); }

}  // namespace

std::vector<std::string> Arguments(int, const char* const*) {
    int count = 0, newMode = 0;
    wchar_t **arguments = nullptr, **environment = nullptr;
    __wgetmainargs(&count, &arguments, &environment, 1, &newMode);
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i) texts.push_back(std::filesystem::path(arguments[i]).u8string());
    return texts;
}

bool PrepareOutput(std::FILE* stream) {
    const int descriptor = _fileno(stream);
    _setmode(descriptor, _O_BINARY);
    const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    DWORD mode = 0;
    if (!GetConsoleMode(console, &mode)) return false;
    SetConsoleOutputCP(CP_UTF8);
    return SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::FILE* OpenToRead(const std::string& path) { return _wfopen(Wide(path).c_str(), L"rb"); }

std::FILE* CreateNew(const std::string& path) {
    const int file =
        _wopen(Wide(path).c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
    return file < 0 ? nullptr : _fdopen(file, "wb");
}

bool Flush(std::FILE* file) { return std::fflush(file) == 0 && _commit(_fileno(file)) == 0; }

}  // namespace zel

#else

#include <unistd.h>

namespace zel {

std::vector<std::string> Arguments(int argc, const char* const* argv) {
    return {argv + (argc > 0), argv + argc};
}

bool PrepareOutput(std::FILE* stream) { return isatty(fileno(stream)) != 0; }

std::FILE* OpenToRead(const std::string& path) { return std::fopen(path.c_str(), "rb"); }

std::FILE* CreateNew(const std::string& path) { return std::fopen(path.c_str(), "wbx"); }

bool Flush(std::FILE* file) { return std::fflush(file) == 0 && fsync(fileno(file)) == 0; }

}  // namespace zel

#endif
