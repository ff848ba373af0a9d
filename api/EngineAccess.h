// The one engine of a process, for interfaces that are called from several threads: whoever uses it holds it, the
// others wait. A fork waits for the end of the calculation in work, so that the engine of the child is in order.
#pragma once

namespace frigana::programs {

class EngineAccess {
  public:
    // Waits for the engine. Failed runs leave by a jump from then on, since another engine of the same process may have
    // its handler of the signal in place.
    EngineAccess();
    ~EngineAccess();
    EngineAccess(const EngineAccess&) = delete;
    EngineAccess& operator=(const EngineAccess&) = delete;

    // What the engine holds: the number that the last user left, 0 where something else was calculated since.
    static long loaded();
    static void setLoaded(long number);
};

}  // namespace frigana::programs
