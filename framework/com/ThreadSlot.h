#pragma once

#include <windows.h>

namespace zel {

// One pointer a thread, null at first. Has static lifetime: the slot is taken when the module is loaded and
// given back when it goes. Where the platform has none left, Set does nothing and Get stays null.
class ThreadSlot {
public:
    ThreadSlot() noexcept : index_(TlsAlloc()) {}
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;
    ~ThreadSlot() {
        if (index_ != TLS_OUT_OF_INDEXES) TlsFree(index_);
    }

    void* Get() const noexcept { return index_ == TLS_OUT_OF_INDEXES ? nullptr : TlsGetValue(index_); }
    void Set(void* value) const noexcept {
        if (index_ != TLS_OUT_OF_INDEXES) TlsSetValue(index_, value);
    }

private:
    DWORD index_;
};

}  // namespace zel
