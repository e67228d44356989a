#pragma once

#include <windows.h>

namespace zel {

// What every method that a client can call goes through: no exception leaves the module. Exhausted memory and
// all that may be thrown gives `refusal`, by default 1: nothing was done.
template <class Body>
HRESULT Boundary(Body&& body, HRESULT refusal = S_FALSE) noexcept {
    try {
        return body();
    } catch (...) {
        return refusal;
    }
}

}  // namespace zel
