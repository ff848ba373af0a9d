// Counts every request of memory from the heap, by operator new as by malloc. For one source of a program only, since
// it replaces the allocation of the C library.
#pragma once

#include <atomic>
#include <cstdlib>

namespace frigana::test {

// While `counting` is set, `allocations` rises with each request.
inline std::atomic<bool> counting{false};
inline std::atomic<long> allocations{0};

inline void countAllocation() {
    if (counting.load(std::memory_order_relaxed)) allocations.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace frigana::test

#if defined(__SANITIZE_ADDRESS__)
// The sanitizer's own malloc stands below operator new and malloc, and tells of every request. Not every compiler
// brings the header that declares this routine.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onMalloc)(const volatile void*, std::size_t),
                                                         void (*onFree)(const volatile void*));
namespace {
const int installed = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, std::size_t) { frigana::test::countAllocation(); }, [](const volatile void*) {});
}  // namespace
#else
// Allocation of the C library under the names that a program may replace; operator new, in a library of its own, ends
// here too where they can be seen from there.
#pragma GCC visibility push(default)
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* malloc(std::size_t size) {
    frigana::test::countAllocation();
    return __libc_malloc(size);
}
void* calloc(std::size_t items, std::size_t size) {
    frigana::test::countAllocation();
    return __libc_calloc(items, size);
}
void* realloc(void* block, std::size_t size) {
    frigana::test::countAllocation();
    return __libc_realloc(block, size);
}
}
#pragma GCC visibility pop
#endif
