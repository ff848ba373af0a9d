// The system's trap on an integer division by zero: how a failed run leaves all layers at once, and how the border of
// the library contains it.
#pragma once

namespace frigana {

// Divides 3 by a variable that holds 0. Never returns: where the division does not trap, the same signal is raised.
// Where the way is byJump and a routine is contained in this thread, it leaves that routine without the division.
[[noreturn]] void divideByZero();

// How a failed run leaves its layers. The handler of a signal belongs to the whole process: two engines in one process,
// each with a handler of its own for the time of its runs, take it from each other. All but one of them leave by a jump
// and touch no handler.
enum class Leaving { bySignal, byJump };
// Chooses the way, before the first run; by the signal if nothing was chosen.
void leaveRuns(Leaving way);

// Runs a routine and contains the trap.
//   Given     run      routine to be called with context
//   Returned  (value)  true if it returned, false if it ended in the trap
//   Notes     For the time of the call the signal SIGFPE goes to this routine and is not blocked, and the
//   floating-point
//             environment is the ordinary one (no floating-point traps, round to nearest); both are the caller's own
//             again afterwards. A trap in another thread, and a signal that somebody sends, goes to the handler that
//             the host had, whatever the moment. Calls of one thread may be nested.
bool runContained(void (*run)(void* context), void* context);

// Takes back what a call of runContained that its host left by a jump has not.
void forgetContained();

}  // namespace frigana
