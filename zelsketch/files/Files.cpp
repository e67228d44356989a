#include "Files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>

#include "Interruption.h"
#include "Platform.h"
#include "zel/text/Failure.h"

namespace zel {
namespace {

namespace fs = std::filesystem;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

constexpr std::size_t kBlock = 65536;

[[noreturn]] void Fail(const char* what, const std::string& path, int error) {
    if (error == EEXIST) what = "will not overwrite";
    throw Failure(kUnusable, std::string(what) + ' ' + path + ": " + std::strerror(error));
}

[[noreturn]] void FailOfSize(const std::string& path, std::uint64_t largest) {
    throw Failure(kUnusable, "cannot read " + path + ": larger than " + std::to_string(largest >> 20) +
                                 " MiB, the most that zelsketch takes");
}

bool Holds(const std::string& path, const std::string& bytes) {
    const File file(OpenToRead(path), &std::fclose);
    char block[kBlock];
    std::size_t at = 0;
    while (const std::size_t count = file ? std::fread(block, 1, sizeof block, file.get()) : 0) {
        if (bytes.compare(at, count, block, count) != 0) return false;
        at += count;
    }
    return at == bytes.size();
}

// A file beside its target, complete and read back. It goes with its owner, or at an interruption, unless it
// becomes the target.
class FileBeside {
public:
    // The rights are those of `model`, where there is one.
    FileBeside(const std::string& target, const std::string& bytes, const std::string& model)
        : FileBeside(target) {
        std::error_code ignored;
        const bool hasModel = fs::exists(fs::u8path(model), ignored);
        Write(Create(hasModel), bytes);
        if (hasModel) CopyRights(model, name_);
    }
    ~FileBeside() {
        const Interruption::Hold hold;
        std::error_code ignored;
        if (!name_.empty()) fs::remove(fs::u8path(name_), ignored);
        doomed_.reset();
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    void BecomeTarget(Overwrite overwrite) {
        const Interruption::Hold hold;
        if (const int error = Rename(name_, target_, overwrite != Overwrite::kRefuse))
            Fail("cannot write", target_, error);
        name_.clear();
        doomed_.reset();
    }

private:
    // Once this is done, the destructor cleans up whatever fails.
    explicit FileBeside(const std::string& target) : target_(target) {}

    // Under a name that nobody else uses.
    File Create(bool isPrivate) {
        constexpr int kMostNames = 100;
        std::random_device random;
        for (int i = 0;; ++i) {
            const std::string name = target_ + '.' + std::to_string(random());
            const Interruption::Hold hold;
            doomed_.emplace(fs::u8path(name));
            File file(CreateNew(name, isPrivate), &std::fclose);
            const int error = errno;
            if (file) {
                name_ = name;
                return file;
            }
            doomed_.reset();
            if (error != EEXIST || i == kMostNames) Fail("cannot write", target_, error);
        }
    }

    void Write(File file, const std::string& bytes) {
        if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size() || !Flush(file.get()) ||
            std::fclose(file.release()) != 0)
            Fail("cannot write", target_, errno);
        if (!Holds(name_, bytes))
            throw Failure(kUnusable, "cannot write " + target_ + ": it reads back differently");
    }

    const std::string target_;
    std::string name_;
    std::optional<Interruption::Doomed> doomed_;
};

}  // namespace

std::string ReadFile(const std::string& path, std::uint64_t largest) {
    const File file(OpenToRead(path), &std::fclose);
    if (!file) Fail("cannot read", path, errno);
    std::string bytes;
    std::error_code noRegularFile;
    const std::uintmax_t size = fs::file_size(fs::u8path(path), noRegularFile);
    if (!noRegularFile && size > largest) FailOfSize(path, largest);
    if (!noRegularFile) bytes.reserve(static_cast<std::size_t>(size));
    char block[kBlock];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get())) {
        bytes.append(block, count);
        if (bytes.size() > largest) FailOfSize(path, largest);
    }
    if (std::ferror(file.get())) Fail("cannot read", path, errno);
    return bytes;
}

std::string ReadStream(std::istream& stream, const std::string& name, std::uint64_t largest) {
    std::string bytes;
    char block[kBlock];
    do {
        stream.read(block, sizeof block);
        bytes.append(block, static_cast<std::size_t>(stream.gcount()));
        if (bytes.size() > largest) FailOfSize(name, largest);
    } while (stream);
    if (stream.bad()) Fail("cannot read", name, EIO);
    return bytes;
}

void ExpectWritable(const std::string& path, Overwrite overwrite) {
    std::error_code ignored;
    const fs::file_status status = fs::symlink_status(fs::u8path(path), ignored);
    if (!fs::exists(status)) return;
    if (overwrite == Overwrite::kRefuse) Fail("will not overwrite", path, EEXIST);
    if (!fs::is_regular_file(status))
        throw Failure(kUnusable, "cannot replace " + path + ": not a regular file");
    constexpr fs::perms kWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    const bool isReadOnly = (status.permissions() & kWrite) == fs::perms::none || !MayWrite(path);
    if (isReadOnly && overwrite != Overwrite::kForce)
        throw Failure(kUnusable, "will not replace " + path + ": it is read-only; --force replaces it");
}

void WriteFile(const std::string& path, const std::string& bytes, Overwrite overwrite) {
    FileBeside beside(path, bytes, path);
    beside.BecomeTarget(overwrite);
}

void ReplaceFile(const std::string& path, const std::string& old, const std::string& bytes,
                 Overwrite overwrite, bool keepsBackup) {
    ExpectWritable(path, overwrite);
    const std::string backupPath = path + ".bak";
    if (keepsBackup) ExpectWritable(backupPath, overwrite);
    FileBeside beside(path, bytes, path);
    std::optional<FileBeside> backup;
    if (keepsBackup) backup.emplace(backupPath, old, path);
    const Interruption::Hold hold;
    if (!Holds(path, old))
        throw Failure(kUnusable, "will not replace " + path + ": another program has changed it meanwhile");
    if (backup) backup->BecomeTarget(overwrite);
    beside.BecomeTarget(overwrite);
}

bool IsFolder(const std::string& path) {
    std::error_code ignored;
    return fs::is_directory(fs::u8path(path), ignored);
}

std::string PathIn(const std::string& folder, const std::string& below) {
    return (fs::u8path(folder) / fs::u8path(below)).u8string();
}

void MakeFolderOf(const std::string& path) {
    std::error_code error;
    fs::create_directories(fs::u8path(path).parent_path(), error);
    if (error) Fail("cannot write", path, error.default_error_condition().value());
}

std::string BehindLinks(const std::string& path) {
    std::error_code error;
    if (!fs::is_symlink(fs::u8path(path), error)) return path;
    const fs::path target = fs::canonical(fs::u8path(path), error);
    return error ? path : target.u8string();
}

bool IsSameFile(const std::string& a, const std::string& b) {
    std::error_code ignored;
    return fs::equivalent(fs::u8path(a), fs::u8path(b), ignored);
}

}  // namespace zel
