#pragma once

#if !defined(_WIN32) && !defined(UNDER_CE)
#include <pthread.h>
#endif

#include <gtest/gtest.h>

#include <cstddef>

namespace zel {

// The handheld's stack; instrumented functions take several times the room, whatever the depth.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t kSmallStack = 512 * 1024;
#else
constexpr std::size_t kSmallStack = 64 * 1024;
#endif

// Nested levels that no stack holds; the handheld's memory holds no more.
#ifdef UNDER_CE
constexpr int kManyLevels = 12000;
#else
constexpr int kManyLevels = 100000;
#endif

template <class Body>
void OnSmallStack(Body body) {
#if defined(_WIN32) || defined(UNDER_CE)  // its own stack is small enough for such a depth
    body();
#else
    const auto run = [](void* context) -> void* { return (*static_cast<Body*>(context))(), nullptr; };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kSmallStack), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &body), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
#endif
}

}  // namespace zel
