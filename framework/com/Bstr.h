#pragma once

#include <windows.h>
#include <oleauto.h>

#include <utility>

namespace zel {

// Owns an automation string. Empty and null are the same to automation, and both are `Length() == 0` here; a
// string that could not be allocated is null.
class Bstr {
public:
    constexpr Bstr() noexcept = default;
    explicit Bstr(const OLECHAR* text) noexcept : text_(SysAllocString(text)) {}
    // `text` may be null: the characters are then for the caller to fill in.
    Bstr(const OLECHAR* text, UINT length) noexcept : text_(SysAllocStringLen(text, length)) {}
    Bstr(Bstr&& other) noexcept : text_(other.Detach()) {}
    Bstr(const Bstr&) = delete;
    ~Bstr() { SysFreeString(text_); }

    Bstr& operator=(Bstr&& other) noexcept {
        Bstr(std::move(other)).Swap(*this);
        return *this;
    }
    Bstr& operator=(const Bstr&) = delete;

    // Hands the string to the caller.
    BSTR Detach() noexcept { return std::exchange(text_, nullptr); }
    void Reset() noexcept { SysFreeString(Detach()); }
    void Swap(Bstr& other) noexcept { std::swap(text_, other.text_); }

    BSTR Get() const noexcept { return text_; }
    UINT Length() const noexcept { return SysStringLen(text_); }
    explicit operator bool() const noexcept { return text_ != nullptr; }

    // An empty place for a callee to put its string.
    BSTR* Out() noexcept {
        Reset();
        return &text_;
    }
    // The place as it is, for a callee that replaces the string in it (a text getter does).
    BSTR* InOut() noexcept { return &text_; }

private:
    BSTR text_ = nullptr;
};

}  // namespace zel
