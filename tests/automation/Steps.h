#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "format/HexDump.h"

namespace zel {

// A VARIANT in steps: the number of its type, and its data or text (in 7-bit characters and "\x20ac"); an
// object is a number that the client gives.
struct StepValue {
    unsigned type = 0;
    std::uint64_t data = 0;
    std::u16string text;
    int object = -1;
};

// Who takes the steps: late-bound calls to objects that it numbers, and files by a name.
class StepClient {
public:
    virtual ~StepClient() = default;
    virtual int New(const std::string& className) = 0;
    virtual void Drop(int object) = 0;
    // Flags as in IDispatch::Invoke; gives what the call returned.
    virtual std::uint32_t Call(int object, const std::u16string& name, unsigned flags,
                               const std::vector<StepValue>& arguments, StepValue& result) = 0;
    virtual std::u16string PathOf(const std::string& file) = 0;
    virtual std::string BytesOf(const std::string& file) = 0;
    virtual void SetBytes(const std::string& file, const std::string& bytes) = 0;
};

// Takes the steps of a table (steps.txt, which tells how they are written). What goes wrong is reported with
// its line.
class Steps {
public:
    explicit Steps(StepClient& client) : client_(client) {}

    // The objects of a case are gone when the next one begins. The number of the steps.
    int Take(const std::string& table) {
        std::ifstream lines(table);
        std::string line;
        int taken = 0;
        while (std::getline(lines, line)) {
            ++number_;
            if (line.empty() || line[0] == '#') continue;
            SCOPED_TRACE(table + ":" + std::to_string(number_) + ": " + line);
            TakeOne(line);
            ++taken;
        }
        DropAll();
        return taken;
    }

private:
    static constexpr unsigned kMethod = 1, kGet = 2, kPut = 4;
    static constexpr unsigned kI4 = 3, kR8 = 5, kText = 8, kObject = 9, kUnknownObject = 13;

    void TakeOne(const std::string& line) {
        static const std::regex fresh(R"((\w+) = new (\w+))"), keeps(R"((\w+) = (\w+)\.(\w+)(?:\((.*)\))?)"),
            puts(R"((\w+)\.(\w+) = (.*))"), asks(R"((\w+)\.(\w+)(?:\((.*)\))?(?: (->|!) (.*))?)"),
            shows(R"(tree (\w+) ->(?: (.*))?)"), file(R"(file (\w+) (=|->)(?: (.*))?)"),
            drop(R"(drop (\w+))"), begin(R"(case (.*))");
        std::smatch part;
        StepValue result;
        if (std::regex_match(line, part, begin)) return DropAll();
        if (std::regex_match(line, part, drop)) return Drop(part[1]);
        if (std::regex_match(line, part, file)) return TakeFile(part[1], part[2], part[3]);
        if (std::regex_match(line, part, shows)) {
            EXPECT_EQ(part[2], Tree(objects_.at(part[1])));
        } else if (std::regex_match(line, part, fresh)) {
            Keep(part[1], client_.New(part[2]));
        } else if (std::regex_match(line, part, keeps)) {
            EXPECT_EQ(0u, Call(part[2], part[3], kMethod | kGet, Values(part[4]), result));
            Keep(part[1], result.object);
        } else if (std::regex_match(line, part, puts)) {
            EXPECT_EQ(0u, Call(part[1], part[2], kPut, Values(part[3]), result));
        } else if (std::regex_match(line, part, asks)) {
            const std::uint32_t returned = Call(part[1], part[2], kMethod | kGet, Values(part[3]), result);
            EXPECT_EQ(part[4] == "!" ? std::stoul(part[5], nullptr, 16) : 0u, returned);
            if (part[4] == "->") ExpectShown(part[5], result);
            if (result.object >= 0) client_.Drop(result.object);
        } else {
            ADD_FAILURE() << "not understood";
        }
    }

    void TakeFile(const std::string& name, const std::string& way, const std::string& bytes) {
        if (way == "=") return client_.SetBytes(name, Hex(bytes));
        EXPECT_TRUE(SameBytes(Hex(bytes), client_.BytesOf(name)));
    }

    void Keep(const std::string& name, int object) {
        EXPECT_LE(0, object) << "no object";
        Drop(name);
        objects_[name] = object;
    }
    void Drop(const std::string& name) {
        if (objects_.count(name)) client_.Drop(objects_[name]);
        objects_.erase(name);
    }
    void DropAll() {
        while (!objects_.empty()) Drop(objects_.begin()->first);
    }

    std::uint32_t Call(const std::string& object, const std::string& name, unsigned flags,
                       const std::vector<StepValue>& arguments, StepValue& result) {
        return client_.Call(objects_.at(object), {name.begin(), name.end()}, flags, arguments, result);
    }

    std::vector<StepValue> Values(const std::string& list) {
        static const std::regex value(
            R"re("((?:[^"])*)"|(\d+):([0-9a-f]+)|@(\w+)|(-?\d+\.\d+)|(-?\d+)|(\w+))re");
        std::vector<StepValue> values;
        for (std::sregex_iterator at(list.begin(), list.end(), value), end; at != end; ++at)
            values.push_back(ValueOf(*at));
        return values;
    }

    StepValue ValueOf(const std::smatch& part) {
        if (part[1].matched) return {kText, 0, Unescaped(part[1]), -1};
        if (part[2].matched)
            return {static_cast<unsigned>(std::stoul(part[2])), std::stoull(part[3], nullptr, 16), {}, -1};
        if (part[4].matched) return {kText, 0, client_.PathOf(part[4]), -1};
        if (part[5].matched) {
            StepValue real{kR8, 0, {}, -1};
            const double number = std::stod(part[5]);
            std::memcpy(&real.data, &number, sizeof number);
            return real;
        }
        if (part[6].matched) return {kI4, static_cast<std::uint32_t>(std::stol(part[6])), {}, -1};
        return {kObject, 0, {}, objects_.at(part[7])};
    }

    static std::u16string Unescaped(const std::string& text) {
        std::u16string plain;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const bool escaped = text.compare(i, 2, "\\x") == 0;
            plain += escaped ? static_cast<char16_t>(std::stoul(text.substr(i + 2, 4), nullptr, 16))
                             : static_cast<char16_t>(static_cast<unsigned char>(text[i]));
            if (escaped) i += 5;
        }
        return plain;
    }

    static void ExpectShown(const std::string& expected, const StepValue& value) {
        EXPECT_EQ(expected, Shown(value));
    }

    static std::string Shown(const StepValue& value) {
        if (value.type == 0) return "nothing";
        if (value.type == kObject || value.type == kUnknownObject)
            return value.object < 0 ? "no object" : "object";
        if (value.type == kR8) {
            double number;
            std::memcpy(&number, &value.data, sizeof number);
            std::ostringstream text;
            text << number;
            return text.str().find('.') == std::string::npos ? text.str() + ".0" : text.str();
        }
        if (value.type != kText) return std::to_string(static_cast<std::int32_t>(value.data));
        std::ostringstream text;
        for (const char16_t letter : value.text) {
            if (letter < 0x80)
                text << static_cast<char>(letter);
            else
                text << "\\x" << std::hex << std::setw(4) << std::setfill('0') << unsigned{letter};
        }
        return '"' + text.str() + '"';
    }

    // The items of a collection: "GLA1(A B(C)) BSMT" for definitions by code, "5" for a number.
    std::string Tree(int collection) {
        std::string tree;
        StepValue count, item, code, members;
        EXPECT_EQ(0u, client_.Call(collection, u"Count", kGet, {}, count));
        for (std::uint64_t i = 0; i < count.data; ++i) {
            EXPECT_EQ(0u, client_.Call(collection, u"Item", kMethod | kGet, {{kI4, i, {}, -1}}, item = {}));
            tree += i > 0 ? " " : "";
            if (item.object < 0) {
                tree += Shown(item);
                continue;
            }
            EXPECT_EQ(0u, client_.Call(item.object, u"AreaCode", kGet, {}, code = {}));
            EXPECT_EQ(0u, client_.Call(item.object, u"Members", kGet, {}, members = {}));
            const std::string below = Tree(members.object);
            tree +=
                std::string(code.text.begin(), code.text.end()) + (below.empty() ? "" : "(" + below + ")");
            client_.Drop(members.object);
            client_.Drop(item.object);
        }
        return tree;
    }

    StepClient& client_;
    std::map<std::string, int> objects_;
    int number_ = 0;
};

}  // namespace zel
