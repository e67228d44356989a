#include "FlatRelease.h"

#include <utility>

#include "zel/com/ThreadSlot.h"
#include "ZEL_Collection.h"

namespace zel {
namespace {

// The head of the chain that the outermost release of this thread works off.
const ThreadSlot outermostRelease;

}  // namespace

void FlatRelease::Release(ComPtr<ZEL_Collection> members) noexcept {
    ZEL_Collection* released = members.Detach();
    if (!released) return;
    if (auto* pending = static_cast<ZEL_Collection**>(outermostRelease.Get())) {
        released->nextReleased_ = std::exchange(*pending, released);
        return;
    }
    ZEL_Collection* pending = released;
    outermostRelease.Set(&pending);
    while (pending) {
        ZEL_Collection* next = std::exchange(pending, pending->nextReleased_);
        next->nextReleased_ = nullptr;
        next->Release();
    }
    outermostRelease.Set(nullptr);
}

}  // namespace zel
