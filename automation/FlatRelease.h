#pragma once

#include "zel/com/ComPtr.h"

namespace zel {

class ZEL_Collection;

// How a tree of definition objects goes away without recursion, on a constant stack however deep it is.
class FlatRelease {
public:
    // Gives back the one reference that a definition holds to its members. While another such release is
    // under way on this thread it only queues there, for the outermost one to work off.
    static void Release(ComPtr<ZEL_Collection> members) noexcept;
};

}  // namespace zel
