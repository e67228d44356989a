#include "Platform.h"

#ifdef _WIN32

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>

// Of the C library, though in none of its public headers: what starts a wmain.
extern "C" int __cdecl __wgetmainargs(int* argc, wchar_t*** argv, wchar_t*** environment, int expandPatterns,
                                      int* newMode);

namespace zel {
namespace {

std::wstring Wide(const std::string& path) { return std::filesystem::u8path(path).wstring(); }

// As a number of errno.
int LastError() {
    const std::error_code error(static_cast<int>(GetLastError()), std::system_category());
    return error.default_error_condition().value();
}

}  // namespace

std::vector<std::string> Arguments(int, const char* const*) {
    int count = 0, newMode = 0;
    wchar_t **arguments = nullptr, **environment = nullptr;
    __wgetmainargs(&count, &arguments, &environment, 1, &newMode);
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i) texts.push_back(std::filesystem::path(arguments[i]).u8string());
    return texts;
}

void PrepareInput(std::FILE* stream) { _setmode(_fileno(stream), _O_BINARY); }

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

// Others may delete it while it is open, an interrupted program its own.
std::FILE* CreateNew(const std::string& path, bool) {
    const HANDLE file = CreateFileW(Wide(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                    nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        errno = LastError();
        return nullptr;
    }
    return _fdopen(_open_osfhandle(reinterpret_cast<std::intptr_t>(file), 0), "wb");
}

bool Flush(std::FILE* file) { return std::fflush(file) == 0 && _commit(_fileno(file)) == 0; }

bool MayWrite(const std::string& path) { return _waccess(Wide(path).c_str(), 2) == 0; }

int Rename(const std::string& from, const std::string& to, bool replaces) {
    const std::wstring target = Wide(to);
    const DWORD attributes = replaces ? GetFileAttributesW(target.c_str()) : INVALID_FILE_ATTRIBUTES;
    const bool isReadOnly =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (isReadOnly) SetFileAttributesW(target.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
    const DWORD flags = MOVEFILE_WRITE_THROUGH | (replaces ? MOVEFILE_REPLACE_EXISTING : 0);
    const bool isRenamed = MoveFileExW(Wide(from).c_str(), target.c_str(), flags) != 0;
    const int error = isRenamed ? 0 : LastError();
    if (isReadOnly) SetFileAttributesW(target.c_str(), attributes);
    return error;
}

// The mark of a read-only file follows with its name.
void CopyRights(const std::string& model, const std::string& path) {
    const DWORD attributes = GetFileAttributesW(Wide(model).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES)
        SetFileAttributesW(Wide(path).c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
}

}  // namespace zel

#else

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace zel {

std::vector<std::string> Arguments(int argc, const char* const* argv) {
    return {argv + (argc > 0), argv + argc};
}

void PrepareInput(std::FILE*) {}

bool PrepareOutput(std::FILE* stream) { return isatty(fileno(stream)) != 0; }

std::FILE* OpenToRead(const std::string& path) { return std::fopen(path.c_str(), "rb"); }

std::FILE* CreateNew(const std::string& path, bool isPrivate) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, isPrivate ? 0600 : 0666);
    return file < 0 ? nullptr : fdopen(file, "wb");
}

bool Flush(std::FILE* file) { return std::fflush(file) == 0 && fsync(fileno(file)) == 0; }

bool MayWrite(const std::string& path) { return access(path.c_str(), W_OK) == 0; }

int Rename(const std::string& from, const std::string& to, bool replaces) {
    if (replaces) {
        if (rename(from.c_str(), to.c_str()) != 0) return errno;
    } else if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) != 0) {
        // Some file systems know only the older way.
        if (errno != EINVAL && errno != ENOSYS) return errno;
        if (link(from.c_str(), to.c_str()) != 0) return errno;
        unlink(from.c_str());
    }
    const std::string folder = std::filesystem::path(to).parent_path().string();
    const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return 0;
    fsync(handle);
    close(handle);
    return 0;
}

void CopyRights(const std::string& model, const std::string& path) {
    struct stat rights {};
    if (stat(model.c_str(), &rights) != 0) return;
    const bool isOwned = chown(path.c_str(), rights.st_uid, rights.st_gid) == 0;
    // What its group might do, another group may not.
    constexpr mode_t kAll = 07777, kAllButGroup = 0707;
    chmod(path.c_str(), rights.st_mode & (isOwned ? kAll : kAllButGroup));
}

}  // namespace zel

#endif
