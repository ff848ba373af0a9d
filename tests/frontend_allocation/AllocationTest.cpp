// Whole requests through the entry point take no memory from the heap, however they end.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>

#include "Requests.h"

#if defined(__SANITIZE_ADDRESS__)
// Not every compiler brings the header that declares this routine of the sanitizer.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onMalloc)(const volatile void*, std::size_t),
                                                         void (*onFree)(const volatile void*));
#endif

namespace {
std::atomic<bool> counting{false};
std::atomic<long> taken{0};
void count() {
    if (counting.load(std::memory_order_relaxed)) taken.fetch_add(1, std::memory_order_relaxed);
}
}  // namespace

#if defined(__SANITIZE_ADDRESS__)
namespace {
const int installed = __sanitizer_install_malloc_and_free_hooks([](const volatile void*, std::size_t) { count(); },
                                                                [](const volatile void*) {});
}  // namespace
#else
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* malloc(std::size_t size) {
    count();
    return __libc_malloc(size);
}
void* calloc(std::size_t items, std::size_t size) {
    count();
    return __libc_calloc(items, size);
}
void* realloc(void* block, std::size_t size) {
    count();
    return __libc_realloc(block, size);
}
}
#endif

namespace frigana {
namespace {

using namespace test;

TEST(Allocation, NoRequestTakesMemoryFromTheHeap) {
    auto refused = basicParameters();
    refused[0].option = 3;
    struct Row {
        const char* name;
        std::string bytes;
        bool answered;
    };
    const Row rows[] = {
        {"basic cycle", cycleRequest(1, basicParameters()).text(), true},
        {"lower case, as another system writes it", cycleRequest(1, basicParameters(), "r32.fld").text("\r\n"), true},
        {"state point", propertyRequest(4, "1 300 2 101.325").text(), true},
        {"saturation table", propertyRequest(2, "1 250 300 5").text(), true},
        {"fluid information", propertyRequest(1, "").text(), true},
        {"refused", cycleRequest(1, refused).text(), true},
        {"no such fluid", cycleRequest(1, basicParameters(), "NOTHING.FLD").text(), true},
        {"malformed", "2\ntitle\nR134A.FLD\n2 DEF\nx\n", false},
    };
    for (const Row& row : rows) {
        Plant run;
        writeFile(run.request, row.bytes);
        if (!row.answered) testing::internal::CaptureStderr();
        taken = 0;
        counting = true;
        run.call(run.request);
        counting = false;
        const long requests = taken;
        if (!row.answered) testing::internal::GetCapturedStderr();
        EXPECT_EQ(requests, 0) << row.name;
        EXPECT_EQ(run.hasResult(), row.answered) << row.name;
    }
    // The counter does count.
    counting = true;
    std::free(std::malloc(16));
    std::string text(1000, 'x');
    counting = false;
    EXPECT_GE(taken, 1) << text.size();
}

}  // namespace
}  // namespace frigana
