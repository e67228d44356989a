#include "Inputs.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "zel/text/Text.h"

namespace zel {
namespace {

namespace fs = std::filesystem;

void AddFolder(const std::string& folder, std::vector<Inputs::File>& files, std::size_t& others) {
    std::vector<Inputs::File> found;
    try {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(fs::u8path(folder))) {
            if (!entry.is_regular_file()) continue;
            if (LooksLikeDefinitionFile(entry.path().u8string()))
                found.push_back({entry.path().u8string(),
                                 entry.path().lexically_relative(fs::u8path(folder)).u8string()});
            else
                ++others;
        }
    } catch (const fs::filesystem_error& error) {
        throw Failure(kUnusable, "cannot read " + error.path1().u8string() + ": " + error.code().message());
    }
    std::sort(found.begin(), found.end(),
              [](const Inputs::File& a, const Inputs::File& b) { return a.path < b.path; });
    files.insert(files.end(), found.begin(), found.end());
}

}  // namespace

bool LooksLikeDefinitionFile(const std::string& path) {
    const fs::path native = fs::u8path(path);
    constexpr std::string_view kSignature = "\7TRN4WIN";
    std::string extension = native.extension().u8string();
    for (char& c : extension) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 'a' - 'A' : c);
    if (extension == ".zel") return true;
    char start[kSignature.size()] = {};
    std::ifstream(native, std::ios_base::binary).read(start, sizeof start);
    return std::string_view(start, sizeof start) == kSignature;
}

std::vector<Inputs::File> Inputs::Files(const Console& console) const {
    std::vector<File> files;
    std::size_t others = 0;
    for (const std::string& path : paths) {
        std::error_code ignored;
        if (!fs::is_directory(fs::u8path(path), ignored)) {
            files.push_back({path, fs::u8path(path).filename().u8string()});
            continue;
        }
        if (!recursive)
            throw Failure(kUnusable, "cannot read " + path + ": a folder; --recursive takes the files in it");
        AddFolder(path, files, others);
    }
    if (others) console.Complain("passed over " + Counted(others, "file") + " of other kinds");
    return files;
}

ExitStatus Inputs::ForEach(const Console& console, const std::vector<File>& files, const Job& job) {
    ExitStatus worst = kSound;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (!console.outIsTerminal) console.progress->ShowFiles(i, files.size());
        ExitStatus status;
        try {
            status = job(files[i]);
        } catch (const Failure& failure) {
            console.Complain(failure.what());
            status = failure.status();
        }
        worst = std::max(worst, status);
    }
    return worst;
}

}  // namespace zel
