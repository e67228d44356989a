#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "zel/com/Variant.h"

namespace zel {

// A contiguous array of VARIANTs that owns what they hold. Taking from its front costs the same however long
// it is: the front moves, and the room before it is given back when it is half of the array.
class VariantArray {
public:
    VariantArray() noexcept = default;
    VariantArray(VariantArray&& other) noexcept { Swap(other); }
    VariantArray& operator=(VariantArray&& other) noexcept {
        VariantArray(std::move(other)).Swap(*this);
        return *this;
    }
    ~VariantArray();

    std::size_t Size() const noexcept { return items_.size() - front_; }
    const VARIANT* Data() const noexcept { return items_.data() + front_; }
    const VARIANT& operator[](std::size_t position) const noexcept { return Data()[position]; }

    void Reserve(std::size_t size) { items_.reserve(front_ + size); }
    // Appends a copy with references of its own; what `item` refers to by reference is copied itself. A copy
    // that fails is empty. Throws std::bad_alloc and is then as it was.
    void Append(const VARIANT& item);
    // Appends the value itself.
    void Append(Variant&& item);
    // The item leaves the array before it is cleared, so what its release calls back meets a sound array.
    void Remove(std::size_t position) noexcept;
    void Swap(VariantArray& other) noexcept {
        items_.swap(other.items_);
        std::swap(front_, other.front_);
    }

private:
    std::vector<VARIANT> items_;
    std::size_t front_ = 0;
};

}  // namespace zel
