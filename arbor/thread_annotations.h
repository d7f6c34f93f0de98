#pragma once

// Tells the compiler which lock guards what, so that a build with clang stops at an access without
// the lock; other compilers ignore it. Only a field that is guarded at every access is marked. The
// compiler does not check constructors and destructors: no other thread uses the object then.
#if defined(__clang__)
#define ARBOR_THREAD_ATTRIBUTE(attribute) __attribute__((attribute))
#else
#define ARBOR_THREAD_ATTRIBUTE(attribute)
#endif

// A class that is a lock, and one that holds a lock for its own lifetime.
#define ARBOR_LOCK ARBOR_THREAD_ATTRIBUTE(capability("mutex"))
#define ARBOR_SCOPED_LOCK ARBOR_THREAD_ATTRIBUTE(scoped_lockable)

// A field that is touched only while `lock` is held.
#define ARBOR_GUARDED_BY(lock) ARBOR_THREAD_ATTRIBUTE(guarded_by(lock))

// Operations that take `lock`, that give it back (both: without arguments, the object itself), that
// run with it, and that are never called with it.
#define ARBOR_ACQUIRES(...) ARBOR_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define ARBOR_RELEASES(...) ARBOR_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
#define ARBOR_REQUIRES(lock) ARBOR_THREAD_ATTRIBUTE(requires_capability(lock))
#define ARBOR_EXCLUDES(lock) ARBOR_THREAD_ATTRIBUTE(locks_excluded(lock))

// An operation that is not checked; its comment says why.
#define ARBOR_UNCHECKED ARBOR_THREAD_ATTRIBUTE(no_thread_safety_analysis)
