// Whole requests through the entry point take no memory from the heap, however they end.
#include <gtest/gtest.h>

#include "CountedAllocations.h"
#include "Requests.h"

namespace frigana {
namespace {

using namespace test;

// A run that ends at an error leaves by a jump, where the sanitizer reads from the heap how far the stack reaches.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool jumpsAllocate = true;
#else
constexpr bool jumpsAllocate = false;
#endif

TEST(Allocation, NoRequestTakesMemoryFromTheHeap) {
    auto refused = basicParameters();
    refused[0].option = 3;
    struct Row {
        const char* name;
        std::string bytes;
        bool answered;
        bool jumps = false;
    };
    const Row rows[] = {
        {"basic cycle", cycleRequest(1, basicParameters()).text(), true},
        {"lower case, as another system writes it", cycleRequest(1, basicParameters(), "r32.fld").text("\r\n"), true},
        {"state point", propertyRequest(4, "1 300 2 101.325").text(), true},
        {"saturation table", propertyRequest(2, "1 250 300 5").text(), true},
        {"fluid information", propertyRequest(1, "").text(), true},
        {"refused", cycleRequest(1, refused).text(), true, true},
        {"no such fluid", cycleRequest(1, basicParameters(), "NOTHING.FLD").text(), true, true},
        {"malformed", "2\ntitle\nR134A.FLD\n2 DEF\nx\n", false, true},
    };
    for (const Row& row : rows) {
        Plant run;
        writeFile(run.request, row.bytes);
        if (!row.answered) testing::internal::CaptureStderr();
        allocations = 0;
        counting = true;
        run.call(run.request);
        counting = false;
        const long requests = allocations;
        if (!row.answered) testing::internal::GetCapturedStderr();
        if (!row.jumps || !jumpsAllocate) {
            EXPECT_EQ(requests, 0) << row.name;
        }
        EXPECT_EQ(run.hasResult(), row.answered) << row.name;
    }
    // The counter does count.
    counting = true;
    std::free(std::malloc(16));
    std::string text(1000, 'x');
    counting = false;
    EXPECT_GE(allocations, 1) << text.size();
}

}  // namespace
}  // namespace frigana
