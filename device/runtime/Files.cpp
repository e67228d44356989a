// The files of the C library, below the C++ library's streams: a FILE is the system's handle itself, so that
// there is no table of open files that would outlive the module. The streams read and write through the
// descriptor, which is that handle again.
#include <windows.h>

#include <errno.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

HANDLE ToHandle(int descriptor) { return reinterpret_cast<HANDLE>(static_cast<intptr_t>(descriptor)); }

int Fail() {
    errno = EIO;
    return -1;
}

}  // namespace

extern "C" {

// The path is in the ANSI code page. Others may have the file open, as everywhere in the C library.
FILE* fopen(const char* path, const char* mode) {
    wchar_t name[MAX_PATH];
    if (!MultiByteToWideChar(CP_ACP, 0, path, -1, name, MAX_PATH)) return nullptr;
    const bool both = strchr(mode, '+') != nullptr;
    const bool reads = *mode == 'r';
    const DWORD access = both ? GENERIC_READ | GENERIC_WRITE : reads ? GENERIC_READ : GENERIC_WRITE;
    const DWORD disposition = reads ? OPEN_EXISTING : *mode == 'w' ? CREATE_ALWAYS : OPEN_ALWAYS;
    const HANDLE handle = CreateFileW(name, access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, disposition,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return nullptr;
    if (*mode == 'a') SetFilePointer(handle, 0, nullptr, FILE_END);
    return static_cast<FILE*>(handle);
}

int fclose(FILE* file) { return CloseHandle(file) ? 0 : EOF; }

// By this name the C library would bring its own.
int _fclose_r(_reent*, FILE* file) { return fclose(file); }

int fileno(FILE* file) { return static_cast<int>(reinterpret_cast<intptr_t>(file)); }

// None is a terminal.
int _isatty(int) { return 0; }

int _close(int descriptor) { return CloseHandle(ToHandle(descriptor)) ? 0 : Fail(); }

int _read(int descriptor, char* to, int size) {
    DWORD count = 0;
    return ReadFile(ToHandle(descriptor), to, size, &count, nullptr) ? static_cast<int>(count) : Fail();
}

int _write(int descriptor, const char* from, int size) {
    DWORD count = 0;
    return WriteFile(ToHandle(descriptor), from, size, &count, nullptr) ? static_cast<int>(count) : Fail();
}

off_t _lseek(int descriptor, off_t offset, int whence) {
    const DWORD method = whence == SEEK_SET ? FILE_BEGIN : whence == SEEK_CUR ? FILE_CURRENT : FILE_END;
    const DWORD position = SetFilePointer(ToHandle(descriptor), offset, nullptr, method);
    return position == 0xFFFFFFFF ? Fail() : static_cast<off_t>(position);
}

int _fstat(int descriptor, struct stat* status) {
    *status = {};
    status->st_mode = S_IFREG;
    const DWORD size = GetFileSize(ToHandle(descriptor), nullptr);
    status->st_size = static_cast<off_t>(size);
    return size == 0xFFFFFFFF ? Fail() : 0;
}

}  // extern "C"
