// The format's own tests, as a program of the handheld.
#include <gtest/gtest.h>

#include <string>

#include "zel/emulator/Handheld.h"

namespace zel {
namespace {

class HandheldFormat : public testing::TestWithParam<const char*> {};

TEST_P(HandheldFormat, PassesItsOwnTests) {
    Handheld handheld(ZEL_MODULE);
    const std::string filter = GetParam();
    EXPECT_EQ(handheld.RunProgram(ZEL_FORMAT_TEST, {filter.begin(), filter.end()}), 0u) << handheld.shown;
    EXPECT_NE(handheld.shown.find("[  PASSED  ]"), std::string::npos) << handheld.shown;
    EXPECT_EQ(handheld.shown.find("[  PASSED  ] 0"), std::string::npos) << handheld.shown;
}

// Parts that take about as long; the last is all the others.
const char* const kParts[] = {"Drawing*:Area*", "Style*:Entity*", "*AnyStream*",
                              "-Drawing*:Area*:Style*:Entity*:*AnyStream*"};
INSTANTIATE_TEST_SUITE_P(Parts, HandheldFormat, testing::ValuesIn(kParts));

}  // namespace
}  // namespace zel
