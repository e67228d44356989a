#pragma once

#include <windows.h>
#include <oleauto.h>

#include <utility>

#include "ComPtr.h"

namespace zel {

// VariantCopy for a source that the copy leaves alone, which its older declarations do not promise.
inline HRESULT CopyVariant(VARIANT* to, const VARIANT& from) noexcept {
    return VariantCopy(to, const_cast<VARIANT*>(&from));
}

// Owns a VARIANT and clears it at the end. `Get()` lends the value, also as the argument of a call that takes
// a VARIANT by value: that leaves the ownership here.
class Variant {
public:
    Variant() noexcept = default;
    Variant(Variant&& other) noexcept : value_(other.Detach()) {}
    Variant(const Variant&) = delete;
    ~Variant() { Reset(); }

    Variant& operator=(Variant&& other) noexcept {
        Variant(std::move(other)).Swap(*this);
        return *this;
    }
    Variant& operator=(const Variant&) = delete;

    static Variant Int(LONG number) noexcept {
        Variant made;
        V_VT(&made.value_) = VT_I4;
        V_I4(&made.value_) = number;
        return made;
    }
    static Variant UnsignedInt(ULONG number) noexcept {
        Variant made;
        V_VT(&made.value_) = VT_UI4;
        V_UI4(&made.value_) = number;
        return made;
    }
    // Adds a reference to `object`, which may be null.
    static Variant Object(IDispatch* object) noexcept {
        Variant made;
        V_VT(&made.value_) = VT_DISPATCH;
        V_DISPATCH(&made.value_) = object;
        if (object) object->AddRef();
        return made;
    }
    // Takes over the reference.
    template <class T>
    static Variant Object(ComPtr<T>&& object) noexcept {
        Variant made;
        V_VT(&made.value_) = VT_DISPATCH;
        V_DISPATCH(&made.value_) = object.Detach();
        return made;
    }
    // Takes over a value that the caller owned.
    static Variant Attach(const VARIANT& value) noexcept {
        Variant owner;
        owner.value_ = value;
        return owner;
    }
    // Hands the value to the caller.
    VARIANT Detach() noexcept {
        const VARIANT value = value_;
        V_VT(&value_) = VT_EMPTY;
        return value;
    }
    // An empty one costs no call.
    void Reset() noexcept {
        if (Type() != VT_EMPTY) VariantClear(&value_);
    }
    void Swap(Variant& other) noexcept { std::swap(value_, other.value_); }

    VARTYPE Type() const noexcept { return V_VT(&value_); }
    const VARIANT& Get() const noexcept { return value_; }

    // An empty place for a callee to put its value.
    VARIANT* Out() noexcept {
        Reset();
        return &value_;
    }
    // The place as it is, for a callee that replaces the value in it.
    VARIANT* InOut() noexcept { return &value_; }

private:
    VARIANT value_{};  // all zero, as the platform makes it
};

}  // namespace zel
