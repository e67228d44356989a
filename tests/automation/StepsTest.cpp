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

    std::uint32_t Call(int object, const std::u16string& name, unsigned flags,
                       const std::vector<StepValue>& values, StepValue& result) override {
        std::vector<VARIANT> arguments;
        std::vector<Bstr> texts;
        for (auto value = values.rbegin(); value != values.rend(); ++value) {
            VARIANT argument;
            V_VT(&argument) = static_cast<VARTYPE>(value->type);
            V_UI8(&argument) = value->data;
            if (value->object >= 0) V_DISPATCH(&argument) = objects_.at(value->object).Get();
            if (value->type == VT_BSTR && value->data == 0)
                V_BSTR(&argument) = texts.emplace_back(Wide(value->text).c_str()).Get();
            arguments.push_back(argument);
        }
        std::wstring wide = Wide(name);
        wchar_t* text = wide.data();
        DISPID member = DISPID_UNKNOWN, put = DISPID_PROPERTYPUT;
        IDispatch& target = *objects_.at(object).Get();
        const HRESULT known = target.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &member);
        if (FAILED(known)) return static_cast<std::uint32_t>(known);
        const bool puts = flags & DISPATCH_PROPERTYPUT;
        DISPPARAMS parameters{arguments.data(), puts ? &put : nullptr, static_cast<UINT>(arguments.size()),
                              puts ? 1u : 0u};
        Variant value;
        const HRESULT returned =
            target.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(flags), &parameters,
                          value.Out(), nullptr, nullptr);
        result.type = value.Type();
        result.data = V_UI8(&value.Get());
        if (value.Type() == VT_BSTR)
            result.text = {V_BSTR(&value.Get()), V_BSTR(&value.Get()) + SysStringLen(V_BSTR(&value.Get()))};
        if (value.Type() == VT_DISPATCH && V_DISPATCH(&value.Get()))
            result.object = Number(ComPtr<IDispatch>(V_DISPATCH(&value.Get())));
        return static_cast<std::uint32_t>(returned);
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
    int Number(ComPtr<IDispatch> object) {
        objects_[++last_] = std::move(object);
        return last_;
    }

    std::map<int, ComPtr<IDispatch>> objects_;
    int last_ = 0;
};

TEST(AutomationSteps, GiveWhatTheTableSays) {
    {
        Desktop desktop;
        EXPECT_LT(150, Steps(desktop).Take(ZEL_STEPS));
    }
    EXPECT_EQ(0, Module::LockCount());
}

}  // namespace
}  // namespace zel
