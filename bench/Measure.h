#pragma once

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "zel/record/Record.h"

namespace zel {

// What the programs of this folder share. A benchmark is named group/what/records; scripts/bench sets
// group/what against group/what_floor of the same number of records.

constexpr std::int64_t kRecordCounts[] = {1000, 100000, 1000000};
constexpr std::size_t kStreamBuffer = 64 * 1024;

// Times `run` once an iteration. What it gives is destroyed with the clock stopped.
template <class Run>
void TimeEach(benchmark::State& state, Run run) {
    using Clock = std::chrono::steady_clock;
    for ([[maybe_unused]] auto _ : state) {
        const auto start = Clock::now();
        auto result = run();
        benchmark::DoNotOptimize(result);
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    }
}

// A file that lives as long as its owner, in the folder the program runs in.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& bytes = {}) { WriteRaw(bytes); }
    ~ScratchFile() { unlink(kName); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    template <class File>
    std::unique_ptr<File> Load() const {
        auto file = std::make_unique<File>();
        std::vector<char> buffer(kStreamBuffer);
        std::ifstream stream;
        stream.rdbuf()->pubsetbuf(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        stream.open(kName, std::ios_base::binary);
        if (!file->Read(stream)) std::abort();
        return file;
    }

    bool Save(Record& record) const {
        std::vector<char> buffer(kStreamBuffer);
        std::ofstream stream;
        stream.rdbuf()->pubsetbuf(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        stream.open(kName, std::ios_base::binary);
        record.Write(stream);
        stream.close();
        if (!stream) std::abort();
        return true;
    }

    // The floor of writing: the bytes as they are, in one call.
    bool WriteRaw(const std::string& bytes) const {
        const int file = open(kName, O_WRONLY | O_CREAT | O_TRUNC, 0666);
        if (write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
        return close(file) == 0;
    }

    double Size() const {
        return static_cast<double>(std::ifstream(kName, std::ios_base::binary | std::ios_base::ate).tellg());
    }

private:
    static constexpr char kName[] = "bench.tmp";
};

inline std::string BytesOf(Record& record) {
    std::ostringstream stream;
    record.Write(stream);
    return stream.str();
}

// Memory that was got once stays: what the system takes to hand out fresh pages says nothing about us, and it
// would hit large files alone.
inline void KeepMemory() {
    mallopt(M_TRIM_THRESHOLD, -1);
    mallopt(M_MMAP_MAX, 0);
}

// The most memory this process has had so far.
inline double PeakBytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

// How much a load raises the process's peak, as a multiple of the file. The file is made by another process;
// only the first measurement of a process counts.
template <class File, class Make>
void MeasurePeak(benchmark::State& state, Make make, std::int64_t records) {
    const ScratchFile file;
    const pid_t maker = fork();
    if (maker == 0) _exit(file.Save(*make(records)) ? 0 : 1);
    int status = 0;
    if (waitpid(maker, &status, 0) != maker || status != 0) std::abort();
    const double before = PeakBytes();
    TimeEach(state, [&] {
        auto loaded = file.Load<File>();
        state.counters["peak"] = (PeakBytes() - before) / file.Size();
        return loaded;
    });
}

// Registers reading and writing of the files that `make(records)` gives, each beside its floor: `parse` turns
// the bytes in memory into plain structs of the standard library.
template <class File, class Make, class Parse>
void RegisterFile(const std::string& group, Make make, Parse parse) {
    KeepMemory();
    const std::string peak = group + "/peak/" + std::to_string(kRecordCounts[2]);
    benchmark::RegisterBenchmark(
        peak.c_str(), [=](benchmark::State& state) { MeasurePeak<File>(state, make, kRecordCounts[2]); })
        ->UseManualTime()
        ->Iterations(1);
    for (const std::int64_t records : kRecordCounts) {
        const auto add = [&](const char* what, auto body) {
            const std::string name = group + '/' + what + '/' + std::to_string(records);
            benchmark::RegisterBenchmark(name.c_str(), body)->UseManualTime()->Unit(benchmark::kMicrosecond);
        };
        add("read", [=](benchmark::State& state) {
            const ScratchFile file(BytesOf(*make(records)));
            TimeEach(state, [&] { return file.Load<File>(); });
        });
        add("read_floor", [=](benchmark::State& state) {
            const std::string bytes = BytesOf(*make(records));
            TimeEach(state, [&] { return parse(bytes); });
        });
        add("write", [=](benchmark::State& state) {
            const auto content = make(records);
            const ScratchFile file;
            TimeEach(state, [&] { return file.Save(*content); });
        });
        add("write_floor", [=](benchmark::State& state) {
            const std::string bytes = BytesOf(*make(records));
            const ScratchFile file;
            TimeEach(state, [&] { return file.WriteRaw(bytes); });
        });
    }
}

}  // namespace zel
