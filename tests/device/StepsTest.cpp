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

    std::uint32_t Call(int object, const std::u16string& name, unsigned flags, const StepValue* given,
                       StepValue& result) override {
        Handheld::Scratch scratch(handheld_);
        const Word variable = scratch.Take(16);
        std::vector<Value> arguments;
        Value text, value;
        if (given) {
            if (given->text) text = {kBstr, handheld_.NewString(*given->text)};
            arguments = {given->text          ? text
                         : given->object >= 0 ? Value::Object(objects_.at(given->object))
                                              : Value{static_cast<std::uint16_t>(given->type), given->data}};
            handheld_.WriteValue(variable, arguments[0]);
            if (given->isReference) arguments[0] = {kVariant | kByRef, variable};
        }
        const Word returned = handheld_.CallByName(objects_.at(object), name, flags, arguments, value);
        handheld_.Clear(text);
        Show(value, result);
        return returned;
    }
    bool Next(int enumerator, StepValue& item) override {
        Handheld::Scratch scratch(handheld_);
        const Word place = scratch.Take(16);
        Word walk = 0;
        handheld_.QueryInterface(objects_.at(enumerator), SystemIid(0x20404), walk);
        const Word returned = handheld_.machine.Invoke(walk, 3, 1u, place, 0u);
        handheld_.Release(walk);
        Show(handheld_.ReadValue(place), item);
        return returned == kOk;
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
    void Show(const Value& value, StepValue& shown) {
        shown.type = value.type;
        shown.data = value.data;
        if (value.type == kBstr) shown.text = handheld_.StringOf(value.Low());
        if (value.type == kBstr) handheld_.Clear(value);
        if ((value.type == kDispatch || value.type == kUnknown) && value.Low())
            shown.object = Number(value.Low());
    }

    Handheld& handheld_;
    std::map<int, Word> objects_;
    int last_ = 0;
};

class HandheldSteps : public testing::TestWithParam<Word> {};

TEST_P(HandheldSteps, GiveWhatTheTableSaysWhereverTheModuleIsLoaded) {
    Handheld handheld(ZEL_MODULE, GetParam());
    {
        Emulated emulated(handheld);
        EXPECT_LT(250, Steps(emulated).Take(ZEL_TABLES "steps.txt"));
    }
    EXPECT_EQ(handheld.Unload(), "");
    EXPECT_LE(handheld.machine.StackUsed(), 8192u);
}
INSTANTIATE_TEST_SUITE_P(Addresses, HandheldSteps,
                         testing::Values(Handheld::kPreferredBase, Handheld::kOtherBase));

}  // namespace
}  // namespace zel
