// What the C++ library asks of threads, in place of its single-threaded answer: the library is built with
// this header and installs it. The functions are the module's (runtime/Threads.cpp).
#ifndef _GLIBCXX_GCC_GTHR_DEVICE_H
#define _GLIBCXX_GCC_GTHR_DEVICE_H

#define __GTHREADS 1

typedef unsigned __gthread_key_t;
typedef long __gthread_once_t;
typedef int __gthread_mutex_t;
typedef int __gthread_recursive_mutex_t;

#define __GTHREAD_ONCE_INIT 0
#define __GTHREAD_MUTEX_INIT 0
#define __GTHREAD_RECURSIVE_MUTEX_INIT 0

#ifdef __cplusplus
extern "C" {
#endif

int zel_once(__gthread_once_t* once, void (*run)(void));
// One lock for all: the library holds its locks for moments only.
void zel_lock(void);
void zel_unlock(void);

#ifdef __cplusplus
}
#endif

static inline int __gthread_active_p(void) { return 1; }

static inline int __gthread_once(__gthread_once_t* once, void (*run)(void)) { return zel_once(once, run); }

static inline int __gthread_mutex_destroy(__gthread_mutex_t* mutex) {
    (void)mutex;
    return 0;
}
static inline int __gthread_mutex_lock(__gthread_mutex_t* mutex) {
    (void)mutex;
    zel_lock();
    return 0;
}
static inline int __gthread_mutex_unlock(__gthread_mutex_t* mutex) {
    (void)mutex;
    zel_unlock();
    return 0;
}
static inline int __gthread_recursive_mutex_destroy(__gthread_recursive_mutex_t* mutex) {
    return __gthread_mutex_destroy(mutex);
}
static inline int __gthread_recursive_mutex_lock(__gthread_recursive_mutex_t* mutex) {
    return __gthread_mutex_lock(mutex);
}
static inline int __gthread_recursive_mutex_unlock(__gthread_recursive_mutex_t* mutex) {
    return __gthread_mutex_unlock(mutex);
}

// Never called: the module has exception state of its own. The library's is compiled all the same.
int __gthread_key_create(__gthread_key_t* key, void (*destroy)(void*));
int __gthread_key_delete(__gthread_key_t key);
void* __gthread_getspecific(__gthread_key_t key);
int __gthread_setspecific(__gthread_key_t key, const void* value);

#endif
