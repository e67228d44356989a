// How many instructions of its own the module takes on a handheld. What the system's functions take (memory,
// texts, files, the dispatch of a late-bound call) is not among them.
#include <cstdio>
#include <functional>
#include <string>

#include "zel/emulator/Client.h"

namespace zel {
namespace {

// What such a core of 206 MHz does in a second, with what its caches miss: an estimate.
constexpr double kSlow = 50e6, kFast = 150e6;

class Bench {
public:
    void Run() {
        Word definition = 0;
        Report("create and release a definition",
               [&] { handheld_.Release(NewObject(handheld_, "ZEL_Definition")); });
        definition = NewObject(handheld_, "ZEL_Definition");
        Call(definition, u"Multiplier", 2, {});  // the first call loads the type library
        Report("get a number late-bound, by its name", [&] { Call(definition, u"Multiplier", 2, {}); });
        Report("get a text late-bound, by its name",
               [&] { handheld_.Clear(Call(definition, u"AreaName", 2, {})); });
        handheld_.Release(definition);
        for (const int count : {10, 100, 1000}) RunFile(count);
    }

private:
    void RunFile(int count) {
        const std::string definitions = std::to_string(count) + " definitions";
        const Word store = NewObject(handheld_, "BRU_Store");
        const Value list = Call(store, u"Definitions", 2, {});
        for (int i = 0; i < count; ++i) {
            const Word definition = NewObject(handheld_, "ZEL_Definition");
            const Value code{kBstr, handheld_.NewString(u"GLA1")};
            Call(definition, u"AreaCode", 4, {code});
            Call(list.Low(), u"Add", 1, {Value::Object(definition)});
            handheld_.Clear(code);
            handheld_.Release(definition);
        }
        const Value path{kBstr, handheld_.NewString(u"\\f")};
        Report("save " + definitions, [&] { Call(store, u"SaveToFile", 1, {path}); });
        Report("load " + definitions, [&] { Call(store, u"LoadFromFile", 1, {path}); });
        handheld_.Clear(path);
        handheld_.Clear(list);
        handheld_.Release(store);
    }

    void Report(const std::string& what, const std::function<void()>& work) {
        work();
        const std::uint64_t before = handheld_.machine.Instructions();
        work();
        const auto instructions = static_cast<double>(handheld_.machine.Instructions() - before);
        std::printf("%-40s %12.0f instructions, about %.3g to %.3g ms\n", what.c_str(), instructions,
                    instructions / kFast * 1000, instructions / kSlow * 1000);
    }

    Value Call(Word object, const std::u16string& name, Word flags, std::vector<Value> arguments) {
        Value result;
        if (handheld_.CallByName(object, name, flags, std::move(arguments), result) != kOk)
            throw Fault(Utf8(name));
        return result;
    }

    Handheld handheld_{ZEL_MODULE};
};

}  // namespace
}  // namespace zel

int main() { zel::Bench().Run(); }
