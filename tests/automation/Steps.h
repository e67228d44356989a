#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <map>
#include <optional>
#include <regex>
#include <sstream>
#include <string>

#include "format/HexDump.h"

namespace zel {

// A VARIANT in steps: the number of its type, and its data or text (in 7-bit characters and "\x20ac"); an
// object is a number that the client gives. A reference to a VARIANT is one to its value.
struct StepValue {
    unsigned type = 0;
    std::uint64_t data = 0;
    std::optional<std::u16string> text = {};
    int object = -1;
    bool isReference = false;
};

// Who takes the steps: late-bound calls to objects that it numbers, and files by a name.
class StepClient {
public:
    virtual ~StepClient() = default;
    virtual int New(const std::string& className) = 0;
    virtual void Drop(int object) = 0;
    // Flags as in IDispatch::Invoke; gives what the call returned. `argument` may be null.
    virtual std::uint32_t Call(int object, const std::u16string& name, unsigned flags,
                               const StepValue* argument, StepValue& result) = 0;
    // The next item of an enumerator, if there is one.
    virtual bool Next(int enumerator, StepValue& item) = 0;
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
        std::string line, more;
        int taken = 0;
        for (int number = 1; std::getline(lines, line); ++number) {
            if (line.empty() || line[0] == '#') continue;
            for (; lines.peek() == ' ' && std::getline(lines, more); ++number) line += more.substr(3);
            SCOPED_TRACE(table + ":" + std::to_string(number) + ": " + line);
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
            puts(R"((\w+)\.(\w+)(?:: (.*?))? = (.*?)(?: -> (.*))?)"),
            asks(R"((\w+)\.(\w+)(?:\((.*)\))?(?: (->|!) (.*))?)"), shows(R"((tree|walk) (\w+) ->(?: (.*))?)"),
            file(R"(file (\w+) (=|->)(?: (.*))?)"), drop(R"(drop (\w+))"), begin(R"(case (.*))");
        std::smatch part;
        StepValue result;
        if (std::regex_match(line, part, begin)) return DropAll();
        if (std::regex_match(line, part, drop)) return Drop(part[1]);
        if (std::regex_match(line, part, file)) return TakeFile(part[1], part[2], part[3]);
        if (std::regex_match(line, part, shows)) {
            EXPECT_EQ(part[3], part[1] == "tree" ? Tree(objects_.at(part[2])) : Walk(objects_.at(part[2])));
        } else if (std::regex_match(line, part, fresh)) {
            Keep(part[1], client_.New(part[2]));
        } else if (std::regex_match(line, part, keeps)) {
            // Some engines call an enumerator that they could get.
            EXPECT_EQ(0u, Call(part[2], part[3], part[3] == "_NewEnum" ? kMethod : kMethod | kGet, part[4],
                               result));
            Keep(part[1], result.object);
        } else if (std::regex_match(line, part, puts)) {
            if (part[3].matched) ExpectProperty(part[3], part[1], part[2]);
            EXPECT_EQ(0u, Call(part[1], part[2], kPut, part[4], result));
            if (part[5].matched) ExpectProperty(part[5], part[1], part[2]);
        } else if (std::regex_match(line, part, asks)) {
            const std::uint32_t returned = Call(part[1], part[2], kMethod | kGet, part[3], result);
            EXPECT_EQ(part[4] == "!" ? std::stoul(part[5], nullptr, 16) : 0u, returned);
            EXPECT_EQ(part[4] == "->" ? part[5].str() : Shown(result), Shown(result));
            if (result.object >= 0) client_.Drop(result.object);
        } else {
            ADD_FAILURE() << "not understood";
        }
    }

    void ExpectProperty(const std::string& expected, const std::string& object, const std::string& name) {
        StepValue value;
        EXPECT_EQ(0u, Call(object, name, kGet, "", value));
        EXPECT_EQ(expected, Shown(value));
    }

    void TakeFile(const std::string& name, const std::string& way, const std::string& bytes) {
        if (way == "=") return client_.SetBytes(name, Hex(bytes));
        const bool isFile = bytes[0] == '@';
        EXPECT_TRUE(SameBytes(isFile ? client_.BytesOf(bytes.substr(1)) : Hex(bytes), client_.BytesOf(name)));
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
                       const std::string& argument, StepValue& result) {
        const StepValue value = argument.empty() ? StepValue() : ValueOf(argument);
        return client_.Call(objects_.at(object), {name.begin(), name.end()}, flags,
                            argument.empty() ? nullptr : &value, result);
    }

    StepValue ValueOf(const std::string& shown) {
        static const std::regex value(
            R"re((&)?(?:"(.*)"|(\d+):([0-9a-f]+)|@(\w+)|(-?\d+\.\d+)|(-?\d+)|(\w+)))re");
        std::smatch part;
        EXPECT_TRUE(std::regex_match(shown, part, value)) << shown;
        StepValue made;
        made.isReference = part[1].matched;
        if (part[2].matched) made.text = Unescaped(part[2]);
        if (part[5].matched) made.text = client_.PathOf(part[5]);
        if (made.text) made.type = kText;
        if (part[3].matched) {
            made.type = static_cast<unsigned>(std::stoul(part[3]));
            made.data = std::stoull(part[4], nullptr, 16);
        } else if (part[6].matched) {
            const double number = std::stod(part[6]);
            made.type = kR8;
            std::memcpy(&made.data, &number, sizeof number);
        } else if (part[7].matched) {
            made.type = kI4;
            made.data = static_cast<std::uint32_t>(std::stol(part[7]));
        } else if (part[8].matched) {
            made.type = kObject;
            made.object = objects_.at(part[8]);
        }
        return made;
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

    static std::string Shown(const StepValue& value) {
        std::ostringstream text;
        if (value.type == 0) return "nothing";
        if (value.type == kObject || value.type == kUnknownObject)
            return value.object < 0 ? "no object" : "object";
        if (value.type == kR8) {
            double number;
            std::memcpy(&number, &value.data, sizeof number);
            if (number != number) {
                text << "5:" << std::hex << value.data;
            } else {
                text << number;
                if (text.str().find('.') == std::string::npos) text << ".0";
            }
            return text.str();
        }
        if (value.type != kText) return std::to_string(static_cast<std::int32_t>(value.data));
        for (const char16_t letter : *value.text) {
            if (letter < 0x80)
                text << static_cast<char>(letter);
            else
                text << "\\x" << std::hex << std::setw(4) << std::setfill('0') << unsigned{letter};
        }
        return '"' + text.str() + '"';
    }

    // What is left of an enumerator.
    std::string Walk(int enumerator) {
        std::string items;
        for (StepValue item; client_.Next(enumerator, item); item = {}) items += ' ' + ShownItem(item);
        return items.substr(!items.empty());
    }

    // The items of a collection: "GLA1(A B(C)) BSMT" for definitions by code, "5" for a number.
    std::string Tree(int collection) {
        std::string items;
        StepValue count;
        EXPECT_EQ(0u, client_.Call(collection, u"Count", kGet, nullptr, count));
        for (std::uint64_t i = 0; i < count.data; ++i) {
            const StepValue index{kI4, i};
            StepValue item;
            EXPECT_EQ(0u, client_.Call(collection, u"Item", kMethod | kGet, &index, item));
            items += ' ' + ShownItem(item);
        }
        return items.substr(!items.empty());
    }

    // Drops what it shows.
    std::string ShownItem(const StepValue& item) {
        if (item.object < 0) return Shown(item);
        StepValue code, members;
        EXPECT_EQ(0u, client_.Call(item.object, u"AreaCode", kGet, nullptr, code));
        EXPECT_EQ(0u, client_.Call(item.object, u"Members", kGet, nullptr, members));
        const std::string below = Tree(members.object);
        client_.Drop(members.object);
        client_.Drop(item.object);
        return std::string(code.text->begin(), code.text->end()) + (below.empty() ? "" : "(" + below + ")");
    }

    StepClient& client_;
    std::map<std::string, int> objects_;
};

}  // namespace zel
