// The steps of the desktop's automation tests, taken by the handheld's module.
#include "automation/Steps.h"

#include <gtest/gtest.h>

#include "zel/emulator/Client.h"

namespace zel {
namespace {

class Emulated final : public StepClient {
public:
    explicit Emulated(Handheld& handheld) : handheld_(handheld) {}

    int New(const std::string& name) override {
        return Number(NewObject(handheld_, name == "Store" ? "BRU_Store" : "ZEL_" + name));
    }
    void Drop(int object) override {
        handheld_.Release(objects_.at(object));
        objects_.erase(object);
    }

    std::uint32_t Call(int object, const std::u16string& name, unsigned flags,
                       const std::vector<StepValue>& values, StepValue& result) override {
        std::vector<Value> arguments;
        std::vector<Value> texts;
        for (const StepValue& value : values) {
            arguments.push_back({static_cast<std::uint16_t>(value.type), value.data});
            if (value.object >= 0) arguments.back().data = objects_.at(value.object);
            if (value.type != kBstr || value.data != 0) continue;
            arguments.back().data = handheld_.NewString(value.text);
            texts.push_back(arguments.back());
        }
        Value given;
        const Word returned = handheld_.CallByName(objects_.at(object), name, flags, arguments, given);
        for (const Value& text : texts) handheld_.Clear(text);
        result.type = given.type;
        result.data = given.data;
        if (given.type == kBstr) result.text = handheld_.StringOf(given.Low());
        if (given.type == kBstr) handheld_.Clear(given);
        if (given.type == kDispatch && given.Low()) result.object = Number(given.Low());
        return returned;
    }

    std::u16string PathOf(const std::string& file) override {
        return u"\\" + std::u16string(file.begin(), file.end());
    }
    std::string BytesOf(const std::string& file) override { return handheld_.files.at(PathOf(file)); }
    void SetBytes(const std::string& file, const std::string& bytes) override {
        handheld_.files[PathOf(file)] = bytes;
    }

private:
    int Number(Word object) {
        objects_[++last_] = object;
        return last_;
    }

    Handheld& handheld_;
    std::map<int, Word> objects_;
    int last_ = 0;
};

TEST(HandheldSteps, GiveWhatTheTableSays) {
    Handheld handheld(ZEL_MODULE);
    {
        Emulated emulated(handheld);
        EXPECT_LT(150, Steps(emulated).Take(ZEL_TABLES "steps.txt"));
    }
    EXPECT_EQ(handheld.Unload(), "");
}

}  // namespace
}  // namespace zel
