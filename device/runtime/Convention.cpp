// What the platform's convention demands of the types that pass between the module and its clients. Where one
// of these fails, calls would go wrong in silence.
#include <windows.h>
#include <oaidl.h>

#include <type_traits>

#include "ZEL_BRU.h"

namespace {

template <class Method, class Interface, class... Arguments>
constexpr bool kTakes = std::is_same_v<Method, HRESULT (STDMETHODCALLTYPE Interface::*)(Arguments...)>;

enum Enumeration { kOne };

static_assert(sizeof(void*) == 4 && sizeof(long) == 4 && sizeof(wchar_t) == 2 && sizeof(Enumeration) == 4);
static_assert(static_cast<char>(-1) < 0);

// An argument of two or more words takes the next ones, which the compiler grants only to an alignment of 4.
static_assert(std::is_trivially_copyable_v<DoubleArgument>);
static_assert(sizeof(DoubleArgument) == 8 && alignof(DoubleArgument) == 4);
static_assert(sizeof(VARIANT) == 16 && alignof(VARIANT) == 4);

static_assert(kTakes<decltype(&IZEL_Definition::put_Multiplier), IZEL_Definition, DoubleArgument>);
static_assert(kTakes<decltype(&IZEL_Definition::put_WallHeight), IZEL_Definition, DoubleArgument>);
static_assert(kTakes<decltype(&IZEL_Definition::put_WallWidth), IZEL_Definition, DoubleArgument>);
static_assert(kTakes<decltype(&IZEL_Collection::Item), IZEL_Collection, VARIANT, VARIANT*>);
static_assert(kTakes<decltype(&IZEL_Collection::Add), IZEL_Collection, VARIANT>);
static_assert(kTakes<decltype(&IZEL_Collection::Remove), IZEL_Collection, VARIANT>);

}  // namespace
