// Simulates a system without more threads, for one thread of a test. Included once in a program.
#pragma once

#include <cerrno>

#include <dlfcn.h>
#include <pthread.h>

// While it exists, the thread that made it can start only this many threads.
class NoMoreThreads {
public:
    explicit NoMoreThreads(int left = 0) { left_ = left; }
    ~NoMoreThreads() { left_ = kUnlimited; }
    NoMoreThreads(const NoMoreThreads&) = delete;
    NoMoreThreads& operator=(const NoMoreThreads&) = delete;

    // Returns false when the next thread is refused.
    static bool TakeOne() { return left_ == kUnlimited || (left_ > 0 && left_-- > 0); }

private:
    static constexpr int kUnlimited = -1;
    static inline thread_local int left_ = kUnlimited;
};

// Replaces the C library's routine of this name.
extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*routine)(void*),
                              void* argument) noexcept {
    using Create = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static const auto next = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
    return NoMoreThreads::TakeOne() ? next(thread, attributes, routine, argument) : EAGAIN;
}
