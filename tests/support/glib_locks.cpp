// GLib's locks for ThreadSanitizer. GLib implements them with futexes in a library that is built without the
// sanitizer. Without these replacements everything that a lock of GLib or GStreamer guards looks like a race.
// Linked into every program of the "thread" build and into no other.
#include <sanitizer/tsan_interface.h>

#include <dlfcn.h>
#include <glib.h>

namespace {

template <typename Routine>
Routine* Next(const char* name) {
    return reinterpret_cast<Routine*>(dlsym(RTLD_NEXT, name));
}

} // namespace

// Everything before the release of a lock happens before the next time it is taken.
#define AFTER_LOCK(name, Type)                                                                               \
    void name(Type* lock) {                                                                                  \
        static const auto next = Next<void(Type*)>(#name);                                                   \
        next(lock);                                                                                          \
        __tsan_acquire(lock);                                                                                \
    }
#define AFTER_TRY(name, Type)                                                                                \
    gboolean name(Type* lock) {                                                                              \
        static const auto next = Next<gboolean(Type*)>(#name);                                               \
        const gboolean taken = next(lock);                                                                   \
        if (taken != FALSE) {                                                                                \
            __tsan_acquire(lock);                                                                            \
        }                                                                                                    \
        return taken;                                                                                        \
    }
#define BEFORE_UNLOCK(name, Type)                                                                            \
    void name(Type* lock) {                                                                                  \
        static const auto next = Next<void(Type*)>(#name);                                                   \
        __tsan_release(lock);                                                                                \
        next(lock);                                                                                          \
    }

extern "C" {

AFTER_LOCK(g_mutex_lock, GMutex)
AFTER_TRY(g_mutex_trylock, GMutex)
BEFORE_UNLOCK(g_mutex_unlock, GMutex)
AFTER_LOCK(g_rec_mutex_lock, GRecMutex)
AFTER_TRY(g_rec_mutex_trylock, GRecMutex)
BEFORE_UNLOCK(g_rec_mutex_unlock, GRecMutex)
AFTER_LOCK(g_rw_lock_reader_lock, GRWLock)
AFTER_TRY(g_rw_lock_reader_trylock, GRWLock)
BEFORE_UNLOCK(g_rw_lock_reader_unlock, GRWLock)
AFTER_LOCK(g_rw_lock_writer_lock, GRWLock)
AFTER_TRY(g_rw_lock_writer_trylock, GRWLock)
BEFORE_UNLOCK(g_rw_lock_writer_unlock, GRWLock)

void g_cond_wait(GCond* condition, GMutex* lock) {
    static const auto next = Next<void(GCond*, GMutex*)>("g_cond_wait");
    __tsan_release(lock);
    next(condition, lock);
    __tsan_acquire(lock);
}

gboolean g_cond_wait_until(GCond* condition, GMutex* lock, gint64 time) {
    static const auto next = Next<gboolean(GCond*, GMutex*, gint64)>("g_cond_wait_until");
    __tsan_release(lock);
    const gboolean signalled = next(condition, lock, time);
    __tsan_acquire(lock);
    return signalled;
}

} // extern "C"
