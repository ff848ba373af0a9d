// The time that the processor has spent on this process: other work on the machine tells nothing.
#pragma once

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <ctime>
#endif

namespace frigana::test {

// By as much the difference of two of these times may be too large.
#ifdef _WIN32
constexpr double processorTimeStep = 1.0 / 64.0;  // [s]
#else
constexpr double processorTimeStep = 1.0 / CLOCKS_PER_SEC;  // [s]
#endif

// How many times longer an emulated processor takes; its time is told as that of a real one.
#ifdef FRIGANA_EMULATED
constexpr double emulation = 40.0;
#else
constexpr double emulation = 1.0;
#endif

inline double processorTime() {  // [s]
#ifdef _WIN32
    // Its clock() is that of the wall.
    FILETIME started, ended, inSystem, inUser;
    GetProcessTimes(GetCurrentProcess(), &started, &ended, &inSystem, &inUser);
    const auto seconds = [](const FILETIME& time) {  // in units of 100 ns
        return 1e-7 * (4294967296.0 * time.dwHighDateTime + time.dwLowDateTime);
    };
    return seconds(inSystem) + seconds(inUser);
#else
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC / emulation;
#endif
}

}  // namespace frigana::test
