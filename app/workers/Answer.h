// How a calculation ended, and what it said.
#pragma once

#include <string>
#include <string_view>

namespace frigana::workers {

// How a request ended. Whatever is not `done` leaves a text for people.
enum class End {
    done,         // the calculation's own answer
    threw,        // it threw an exception
    died,         // its process ended by a signal or an exit
    tooSlow,      // it took more than the time allowed; its process was killed
    outOfMemory,  // it wanted more memory than allowed
    tooLarge,     // its answer, or the request, is longer than allowed
    cancelled,    // the caller gave it up
    stopped,      // the pool was stopped
    noWorker,     // no process could be started
};

std::string_view nameOf(End end);

struct Answer {
    End end = End::stopped;
    std::string text;   // the answer, or what happened
    std::string where;  // where a process died: the calls on its stack, one a line, as far as they are known
};

}  // namespace frigana::workers
