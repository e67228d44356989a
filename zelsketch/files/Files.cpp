#include "Files.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>

#include "zel/text/Failure.h"
#include "Platform.h"

namespace zel {
namespace {

namespace fs = std::filesystem;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

[[noreturn]] void Fail(const char* what, const std::string& path, int error) {
    throw Failure(kUnusable, std::string(what) + ' ' + path + ": " + std::strerror(error));
}

// Makes a file that was not there, and gives 0 or what went wrong.
int Create(const std::string& path, File& file) {
    file.reset(CreateNew(path));
    return file ? 0 : errno;
}

// The same under a name beside `path` that nobody else uses.
int CreateBeside(const std::string& path, File& file, std::string& beside) {
    constexpr int kMostNames = 100;
    std::random_device random;
    int error = EEXIST;
    for (int i = 0; error == EEXIST && i < kMostNames; ++i) {
        beside = path + '.' + std::to_string(random());
        error = Create(beside, file);
    }
    return error;
}

int WriteAndClose(File file, const std::string& bytes) {
    const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    if (!isWritten || !Flush(file.get())) return errno;
    return std::fclose(file.release()) == 0 ? 0 : errno;
}

// Renames `beside` to `path`. Where nothing may be overwritten, an empty file keeps the name free until then.
int Settle(const std::string& beside, const std::string& path, Overwrite overwrite) {
    File claim(nullptr, &std::fclose);
    if (overwrite == Overwrite::kRefuse) {
        if (const int error = Create(path, claim)) return error;
        claim.reset();
    }
    std::error_code error;
    fs::rename(fs::u8path(beside), fs::u8path(path), error);
    std::error_code ignored;
    if (error && overwrite == Overwrite::kRefuse) fs::remove(fs::u8path(path), ignored);
    return error.default_error_condition().value();
}

}  // namespace

std::string ReadFile(const std::string& path) {
    const File file(OpenToRead(path), &std::fclose);
    if (!file) Fail("cannot read", path, errno);
    std::string bytes;
    std::error_code noRegularFile;
    const std::uintmax_t size = fs::file_size(fs::u8path(path), noRegularFile);
    if (!noRegularFile) bytes.reserve(static_cast<std::size_t>(size));
    char block[64 * 1024];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get()))
        bytes.append(block, count);
    if (std::ferror(file.get())) Fail("cannot read", path, errno);
    return bytes;
}

void ExpectWritable(const std::string& path, Overwrite overwrite) {
    std::error_code ignored;
    const fs::file_status status = fs::symlink_status(fs::u8path(path), ignored);
    if (!fs::exists(status)) return;
    if (overwrite == Overwrite::kRefuse) Fail("will not overwrite", path, EEXIST);
    if (!fs::is_regular_file(status))
        throw Failure(kUnusable, "cannot replace " + path + ": not a regular file");
}

void WriteFile(const std::string& path, const std::string& bytes, Overwrite overwrite) {
    File file(nullptr, &std::fclose);
    std::string beside;
    if (const int error = CreateBeside(path, file, beside)) Fail("cannot write", path, error);
    std::error_code ignored;
    // Nobody may read the new file who could not read the old one.
    const fs::file_status old = fs::status(fs::u8path(path), ignored);
    if (fs::exists(old)) fs::permissions(fs::u8path(beside), old.permissions(), ignored);
    int error = WriteAndClose(std::move(file), bytes);
    if (error == 0) error = Settle(beside, path, overwrite);
    if (error == 0) return;
    fs::remove(fs::u8path(beside), ignored);
    Fail(error == EEXIST ? "will not overwrite" : "cannot write", path, error);
}

}  // namespace zel
