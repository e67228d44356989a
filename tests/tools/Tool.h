#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "Assembler.h"
#include "CommandLine.h"
#include "JsonWriter.h"
#include "Surveyor.h"

namespace zel {

inline std::string JsonOf(const std::string& bytes) {
    std::ostringstream json;
    JsonWriter writer(json);
    Surveyor::Survey(bytes, writer);
    writer.Finish();
    return json.str();
}

struct Outcome {
    int status;
    std::string out;
    std::string error;
};

inline Outcome Zelsketch(std::vector<std::string> arguments, bool hasColour = false) {
    std::ostringstream out, error;
    const Console console{out, error, hasColour, false};
    const int status = RunCommandLine(std::move(arguments), console);
    return {status, out.str(), error.str()};
}

// Works in a folder of its own, which goes with the test.
class ToolTest : public testing::Test {
protected:
    ToolTest() {
        std::string name = (std::filesystem::temp_directory_path() / "zelsketch.XXXXXX").string();
        folder_ = mkdtemp(name.data());
        std::filesystem::current_path(folder_);
    }
    ~ToolTest() override {
        std::filesystem::current_path("/");
        std::filesystem::remove_all(folder_);
    }

    static void Put(const std::string& path, const std::string& bytes) {
        std::ofstream(path, std::ios_base::binary) << bytes;
    }
    static std::string Get(const std::string& path) {
        std::ostringstream bytes;
        bytes << std::ifstream(path, std::ios_base::binary).rdbuf();
        return bytes.str();
    }

private:
    std::filesystem::path folder_;
};

}  // namespace zel
