// The module as a client sees it: loads and saves definition files of two sizes through BRU_Store.
//
//   store_bench make RECORDS FILE   writes a file
//   store_bench time FILE FILE      prints how long each takes, and how the second compares to the first
//
// Each of these in a process that has done nothing else, since memory that it had before would be had again
// for nothing:
//   store_bench load FILE           prints how many milliseconds a load takes
//   store_bench read FILE           the same for the format library alone
//   store_bench peak FILE           prints the most memory a load takes

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

#include "BuiltModule.h"
#include "DefinitionFile.h"

namespace zel {
namespace {

// Seconds of one LoadFromFile or SaveToFile.
using Transfer = HRESULT (STDMETHODCALLTYPE IBRU_Store::*)(BSTR, LONG*);
double Seconds(IBRU_Store& store, Transfer transfer, const char* name) {
    BSTR path = SysAllocString(std::wstring(name, name + strlen(name)).c_str());
    LONG result = -1;
    const auto start = std::chrono::steady_clock::now();
    (store.*transfer)(path, &result);
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    SysFreeString(path);
    if (result != 0) std::abort();
    return passed.count();
}

double SizeOf(const char* name) {
    return static_cast<double>(std::ifstream(name, std::ios_base::binary | std::ios_base::ate).tellg());
}

// Seconds of reading or writing the file by the format library alone, as the store does it.
template <class Stream, class Transfer>
double SecondsAlone(const char* name, Transfer transfer) {
    const auto start = std::chrono::steady_clock::now();
    const std::unique_ptr<char[]> buffer(new char[65536]);
    Stream stream;
    stream.rdbuf()->pubsetbuf(buffer.get(), 65536);
    stream.open(name, std::ios_base::binary);
    transfer(stream);
    stream.close();
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    return passed.count();
}

struct Times {
    double intoEmpty = 1e9, intoFull = 1e9, save = 1e9, writeAlone = 1e9;
};

// Keeps the quickest of what has been measured.
void Measure(const char* name, Times& best) {
    const ComPtr<IBRU_Store> store = Create<IBRU_Store>(CLSID_BRU_Store);
    best.intoEmpty = std::min(best.intoEmpty, Seconds(*store, &IBRU_Store::LoadFromFile, name));
    best.intoFull = std::min(best.intoFull, Seconds(*store, &IBRU_Store::LoadFromFile, name));
    best.save = std::min(best.save, Seconds(*store, &IBRU_Store::SaveToFile, "saved.tmp"));
    SketchFile file;
    SecondsAlone<std::ifstream>(name, [&](auto& s) { file.Read(s); });
    best.writeAlone =
        std::min(best.writeAlone, SecondsAlone<std::ofstream>("saved.tmp", [&](auto& s) { file.Write(s); }));
}

void PrintTimes(const char* smaller, const char* larger) {
    Times few, many;
    // In turn, so that a busy machine slows both alike.
    for (int i = 0; i < 10; ++i) {
        Measure(smaller, few);
        Measure(larger, many);
    }
    DeleteFileW(L"saved.tmp");
    const auto row = [](const char* what, double a, double b) {
        std::printf("%-24s%10.2f%10.2f%10.2f\n", what, a * 1000, b * 1000, b / a);
    };
    std::printf("%-24s%10s%10s%10s\n", "store, ms", "smaller", "larger", "ratio");
    row("load into an empty one", few.intoEmpty, many.intoEmpty);
    row("load into a full one", few.intoFull, many.intoFull);
    row("save", few.save, many.save);
    row("the file alone: write", few.writeAlone, many.writeAlone);
    const auto ratios = [](const char* what, double a, double b) {
        std::printf("%-24s%10.2f%10.2f\n", what, a, b);
    };
    ratios("load full / empty", few.intoFull / few.intoEmpty, many.intoFull / many.intoEmpty);
    ratios("save / write", few.save / few.writeAlone, many.save / many.writeAlone);
}

void PrintLoad(const char* name) {
    const ComPtr<IBRU_Store> store = Create<IBRU_Store>(CLSID_BRU_Store);
    std::printf("%.3f\n", Seconds(*store, &IBRU_Store::LoadFromFile, name) * 1000);
}

void PrintRead(const char* name) {
    SketchFile file;
    std::printf("%.3f\n", SecondsAlone<std::ifstream>(name, [&](auto& s) { file.Read(s); }) * 1000);
}

double PeakBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.PeakWorkingSetSize);
}

void PrintPeak(const char* name) {
    const ComPtr<IBRU_Store> store = Create<IBRU_Store>(CLSID_BRU_Store);
    const double before = PeakBytes();
    Seconds(*store, &IBRU_Store::LoadFromFile, name);
    std::printf("memory that a load takes at its peak: %.1f x the file\n",
                (PeakBytes() - before) / SizeOf(name));
}

void MakeFile(const char* records, const char* name) {
    std::ofstream stream(name, std::ios_base::binary);
    MakeDefinitionFile(std::atoll(records))->Write(stream);
}

}  // namespace
}  // namespace zel

int main(int argc, char** argv) {
    const std::string what = argc > 2 ? argv[1] : "";
    if (what == "make" && argc == 4) return zel::MakeFile(argv[2], argv[3]), 0;
    if (what == "time" && argc == 4) return zel::PrintTimes(argv[2], argv[3]), 0;
    if (what == "load" && argc == 3) return zel::PrintLoad(argv[2]), 0;
    if (what == "read" && argc == 3) return zel::PrintRead(argv[2]), 0;
    if (what == "peak" && argc == 3) return zel::PrintPeak(argv[2]), 0;
    return 2;
}
