#include "EngineAccess.h"

#include <mutex>

#ifndef _WIN32
#include <pthread.h>
#endif

#include "Trap.h"

namespace frigana::programs {

namespace {

std::mutex engine;
long held = 0;

void prepare() {
    leaveRuns(Leaving::byJump);
#ifndef _WIN32
    pthread_atfork([] { engine.lock(); }, [] { engine.unlock(); }, [] { engine.unlock(); });
#endif
}

}  // namespace

EngineAccess::EngineAccess() {
    static std::once_flag prepared;
    std::call_once(prepared, prepare);
    engine.lock();
}

EngineAccess::~EngineAccess() {
    engine.unlock();
}

long EngineAccess::loaded() {
    return held;
}

void EngineAccess::setLoaded(long number) {
    held = number;
}

}  // namespace frigana::programs
