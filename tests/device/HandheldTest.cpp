#include "Handheld.h"

#include <gtest/gtest.h>

namespace zel {
namespace {

TEST(Handheld, LoadsAndUnloads) {
    Handheld handheld(ZEL_MODULE);
    EXPECT_EQ(handheld.Unload(), "");
}

}  // namespace
}  // namespace zel
