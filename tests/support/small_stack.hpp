// Running work on a thread with the stack of a small device.
#pragma once

#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>

// 256 KiB; the sanitizers' own frames are larger.
inline void onSmallStack(std::function<void()> work)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr std::size_t kStack = std::size_t{1024} * 1024;
#else
    constexpr std::size_t kStack = std::size_t{256} * 1024;
#endif
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStack), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void* context) -> void* {
                      (*static_cast<std::function<void()>*>(context))();
                      return nullptr;
                  },
                  &work),
              0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}
