#pragma once

#include <windows.h>

#include <utility>

#include "ComPtr.h"

namespace zel {

// Puts an object in an empty place that all threads see, without a lock: who loses the race lets go of its
// copy. Gives what stands there then; the place owns the reference.
template <class T>
T* Publish(T* volatile& place, ComPtr<T> made) noexcept {
    auto* target = reinterpret_cast<void* volatile*>(&place);
    void* winner = InterlockedCompareExchangePointer(target, made.Get(), nullptr);
    return winner ? static_cast<T*>(winner) : made.Detach();
}

}  // namespace zel
