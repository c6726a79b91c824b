#pragma once
// Names for clang's lock analysis (-Wthread-safety). Other compilers see nothing.

#if defined(__clang__)
#define PELORA_ANNOTATE(x) __attribute__((x))
#else
#define PELORA_ANNOTATE(x)
#endif

#define PELORA_CAPABILITY(x) PELORA_ANNOTATE(capability(x))
#define PELORA_SCOPED_CAPABILITY PELORA_ANNOTATE(scoped_lockable)
#define PELORA_GUARDED_BY(x) PELORA_ANNOTATE(guarded_by(x))
#define PELORA_REQUIRES(...) PELORA_ANNOTATE(requires_capability(__VA_ARGS__))
#define PELORA_EXCLUDES(...) PELORA_ANNOTATE(locks_excluded(__VA_ARGS__))
#define PELORA_ACQUIRE(...) PELORA_ANNOTATE(acquire_capability(__VA_ARGS__))
#define PELORA_RELEASE(...) PELORA_ANNOTATE(release_capability(__VA_ARGS__))
#define PELORA_TRY_ACQUIRE(...) PELORA_ANNOTATE(try_acquire_capability(__VA_ARGS__))
#define PELORA_NO_ANALYSIS PELORA_ANNOTATE(no_thread_safety_analysis)
