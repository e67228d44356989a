#include "Files.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

#include "Failure.h"

namespace zel {
namespace {

[[noreturn]] void Fail(const char* what, const std::string& path, int error) {
    throw Failure(kUnusable, std::string(what) + ' ' + path + ": " + std::strerror(error));
}

mode_t ModeFor(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) return status.st_mode & 07777;
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

// Gives 0, or what went wrong.
int WriteAll(int file, const std::string& bytes, mode_t mode) {
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t count = write(file, bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno != EINTR) return errno;
        if (count > 0) done += static_cast<std::size_t>(count);
    }
    return fchmod(file, mode) == 0 && fsync(file) == 0 ? 0 : errno;
}

}  // namespace

std::string ReadFile(const std::string& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) Fail("cannot read", path, errno);
    std::string bytes;
    struct stat status {};
    if (fstat(fileno(file.get()), &status) == 0 && S_ISREG(status.st_mode))
        bytes.reserve(static_cast<std::size_t>(status.st_size));
    char block[64 * 1024];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get()))
        bytes.append(block, count);
    if (std::ferror(file.get())) Fail("cannot read", path, errno);
    return bytes;
}

void ExpectWritable(const std::string& path, Overwrite overwrite) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) return;
    if (overwrite == Overwrite::kRefuse) Fail("will not overwrite", path, EEXIST);
    if (!S_ISREG(status.st_mode)) throw Failure(kUnusable, "cannot replace " + path + ": not a regular file");
}

void WriteFile(const std::string& path, const std::string& bytes, Overwrite overwrite) {
    ExpectWritable(path, overwrite);
    std::string beside = path + ".XXXXXX";
    const int file = mkstemp(beside.data());
    if (file < 0) Fail("cannot write", path, errno);
    int error = WriteAll(file, bytes, ModeFor(path));
    if (close(file) != 0 && error == 0) error = errno;
    if (error == 0 && std::rename(beside.c_str(), path.c_str()) != 0) error = errno;
    if (error == 0) return;
    unlink(beside.c_str());
    Fail("cannot write", path, error);
}

}  // namespace zel
