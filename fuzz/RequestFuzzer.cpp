// Damaged requests for every reader and every check. A run either comes back or ends in the trap; anything else, and
// any unit left open behind it, is a failure.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "13_ReadInputData.h"
#include "14_ErrorControl.h"
#include "40_RangeChecks.h"
#include "Message.h"
#include "TextFile.h"
#include "TimeLimit.h"
#include "Trap.h"

namespace {

using namespace frigana;

Text255 requestPath;
SUBSTANCE substance1, substance2;
CYCLEIN cycle1, cycle2;
PROPREQ propertyRequest;

void readOne(void*) {
    int type = 0, sub = 0, stepFlag = 0;
    READINPUTTYPE(requestPath, type, sub);
    if (type == 1) READINPUTPROPS(requestPath, substance1, propertyRequest, stepFlag);
    if (type != 2) return;
    switch (sub) {
        case 3:
            READINPUTCOMBINED(requestPath, substance1, cycle1, substance2, cycle2);
            break;
        case 4:
            READINPUTCASCADE(requestPath, substance1, cycle1, substance2, cycle2);
            break;
        case 13:
            READINPUTPUMPED(requestPath, substance1, cycle1, substance2, cycle2);
            break;
        default:
            READINPUTCYCLE(requestPath, substance1, cycle1);
            break;
    }
    const Refusal refusal = firstRefusal(sub, cycle1, cycle2);
    if (refusal.kind == Refusal::option || refusal.kind == Refusal::value) {
        if (refusal.code < 200000 || refusal.text.blank()) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int memory = -1;
    if (memory < 0) {
        // The fuzzer may have closed standard error: its number must not become that of the request.
        while (fcntl(2, F_GETFD) < 0)
            if (open("/dev/null", O_WRONLY) < 0) std::abort();
        memory = memfd_create("request", 0);
        if (memory < 0) std::abort();
        message(requestPath, "/proc/self/fd/", Integer{0, memory});
    }
    if (ftruncate(memory, 0) != 0 || pwrite(memory, data, size, 0) != static_cast<ssize_t>(size)) std::abort();
    const fuzz::TimeLimit limit;
    runContained(readOne, nullptr);
    abandonAllUnits();
    if (firstFreeUnit(1) != 1) std::abort();
    return 0;
}
