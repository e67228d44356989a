#include "Steps.h"

#include <cstdio>

#include "Client.h"

namespace zel {
namespace {

// Takes the steps in this process, with the objects that are linked into it.
class Desktop final : public StepClient {
public:
    ~Desktop() override {
        for (const char* file : {"f", "g"}) std::remove(Name(file).c_str());
    }

    int New(const std::string& name) override {
        if (name == "Store") return Number(Make<BRU_Store>().As<IDispatch>());
        if (name == "Header") return Number(Make<ZEL_Header>().As<IDispatch>());
        if (name == "Collection") return Number(Make<ZEL_Collection>().As<IDispatch>());
        return Number(Make<ZEL_Definition>().As<IDispatch>());
    }
    void Drop(int object) override { objects_.erase(object); }

    std::uint32_t Call(int object, const std::u16string& name, unsigned flags, const StepValue* given,
                       StepValue& result) override {
        VARIANT reference, *argument = given ? &variable_ : nullptr;
        Bstr text;
        Variant value;
        if (given) {
            if (given->text) text = Bstr(Wide(*given->text).c_str());
            V_VT(&variable_) = static_cast<VARTYPE>(given->type);
            V_UI8(&variable_) = given->data;
            if (given->text) V_BSTR(&variable_) = text.Get();
            if (given->object >= 0) V_UNKNOWN(&variable_) = objects_.at(given->object).Get();
            V_VT(&reference) = VT_BYREF | VT_VARIANT;
            V_VARIANTREF(&reference) = &variable_;
            if (given->isReference) argument = &reference;
        }
        auto& target = static_cast<IDispatch&>(*objects_.at(object));
        const HRESULT returned =
            zel::Call(target, Wide(name).c_str(), static_cast<WORD>(flags), argument, value.Out());
        V_VT(&variable_) = VT_ERROR;  // who kept a reference to it has nothing
        Show(value.Get(), result);
        return static_cast<std::uint32_t>(returned);
    }
    bool Next(int enumerator, StepValue& item) override {
        Variant value;
        const HRESULT returned = objects_.at(enumerator).As<IEnumVARIANT>()->Next(1, value.Out(), nullptr);
        Show(value.Get(), item);
        return returned == S_OK;
    }

    std::u16string PathOf(const std::string& file) override {
        const std::string name = Name(file);
        return {name.begin(), name.end()};
    }
    std::string BytesOf(const std::string& file) override {
        return {std::istreambuf_iterator<char>(std::ifstream(Name(file), std::ios::binary).rdbuf()), {}};
    }
    void SetBytes(const std::string& file, const std::string& bytes) override {
        std::ofstream(Name(file), std::ios::binary) << bytes;
    }

private:
    static std::string Name(const std::string& file) { return "steps_" + file + ".tmp"; }
    static std::wstring Wide(const std::u16string& text) { return {text.begin(), text.end()}; }
    int Number(ComPtr<IUnknown> object) {
        objects_[++last_] = std::move(object);
        return last_;
    }
    void Show(const VARIANT& value, StepValue& shown) {
        shown.type = V_VT(&value);
        shown.data = V_UI8(&value);
        if (shown.type == VT_BSTR)
            shown.text.emplace(V_BSTR(&value), V_BSTR(&value) + SysStringLen(V_BSTR(&value)));
        if ((shown.type == VT_DISPATCH || shown.type == VT_UNKNOWN) && V_UNKNOWN(&value))
            shown.object = Number(ComPtr<IUnknown>(V_UNKNOWN(&value)));
    }

    std::map<int, ComPtr<IUnknown>> objects_;
    int last_ = 0;
    VARIANT variable_;
};

TEST(AutomationSteps, GiveWhatTheTableSays) {
    {
        Desktop desktop;
        EXPECT_LT(250, Steps(desktop).Take(ZEL_STEPS));
    }
    EXPECT_EQ(0, Module::LockCount());
}

}  // namespace
}  // namespace zel
