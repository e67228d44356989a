#pragma once

#include <windows.h>
#include <unknwn.h>

#include <cstddef>
#include <utility>

namespace zel {

// Owns one reference to a COM object, or none. Move-only: a second reference is asked for by name (Share,
// CopyTo, As).
template <class T>
class ComPtr {
public:
    constexpr ComPtr() noexcept = default;
    constexpr ComPtr(std::nullptr_t) noexcept {}
    // Adds a reference of its own; the caller keeps the one it has.
    explicit ComPtr(T* object) noexcept : object_(object) {
        if (object_) object_->AddRef();
    }
    ComPtr(ComPtr&& other) noexcept : object_(other.Detach()) {}
    template <class U>
    ComPtr(ComPtr<U>&& other) noexcept : object_(other.Detach()) {}
    ComPtr(const ComPtr&) = delete;
    ~ComPtr() { Reset(); }

    ComPtr& operator=(ComPtr&& other) noexcept {
        ComPtr(std::move(other)).Swap(*this);
        return *this;
    }
    ComPtr& operator=(const ComPtr&) = delete;

    // Takes over a reference that the caller owned.
    static ComPtr Attach(T* object) noexcept {
        ComPtr owner;
        owner.object_ = object;
        return owner;
    }
    // Hands the reference to the caller.
    T* Detach() noexcept { return std::exchange(object_, nullptr); }
    // The field is empty before the object goes: what its release calls back finds no reference here.
    void Reset() noexcept {
        if (T* object = Detach()) object->Release();
    }
    void Swap(ComPtr& other) noexcept { std::swap(object_, other.object_); }

    T* Get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    // An empty place for a callee to put its reference.
    T** Out() noexcept {
        Reset();
        return &object_;
    }
    void** OutVoid() noexcept { return reinterpret_cast<void**>(Out()); }

    ComPtr Share() const noexcept { return ComPtr(object_); }
    // The pointer with a reference added; null for none. `out` must not be null.
    template <class U>
    void CopyTo(U** out) const noexcept {
        *out = object_;
        if (object_) object_->AddRef();
    }
    // Another interface of the same object, or none.
    template <class U>
    ComPtr<U> As() const noexcept {
        ComPtr<U> other;
        if (object_) object_->QueryInterface(__uuidof(U), other.OutVoid());
        return other;
    }

private:
    T* object_ = nullptr;
};

}  // namespace zel
