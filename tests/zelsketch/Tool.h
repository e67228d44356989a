#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "zel/commands/CommandLine.h"

namespace zel {

struct Outcome {
    int status;
    std::string out, error;
};

// Works in a folder of its own, which goes with the test.
class ToolTest : public testing::Test {
protected:
    ToolTest() : folder_(std::filesystem::temp_directory_path() / std::to_string(std::random_device{}())) {
        std::filesystem::create_directory(folder_);
        std::filesystem::current_path(folder_);
    }
    ~ToolTest() override {
        std::filesystem::current_path("/");
        std::filesystem::remove_all(folder_);
    }

    static Outcome Zelsketch(const std::vector<std::string>& arguments, bool hasColour = false) {
        std::istringstream in;
        std::ostringstream out, error;
        const int status = RunCommandLine(arguments, {in, out, error, hasColour, false});
        return {status, out.str(), error.str()};
    }
    static void Put(const std::string& path, const std::string& bytes) {
        std::ofstream(path, std::ios_base::binary) << bytes;
    }
    static std::string Get(const std::string& path) {
        std::ifstream file(path, std::ios_base::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // The file `path` of a JSON text.
    static void Build(const std::string& path, const std::string& json) {
        Put("json", json);
        ASSERT_EQ("", Zelsketch({"build", "json", path}).error);
    }

private:
    std::filesystem::path folder_;
};

}  // namespace zel
