// One run at a time: callers of several threads queue.
#pragma once

namespace frigana {

// Waits until no other thread runs, and takes the turn.
//   Returned  (value)  true if a run before this one never came to its end: its host left it by a jump, its thread
//   ended
//                      in it, or the process was divided in the midst of it. What it left is to be cleaned
//   Notes     A thread that left its run by a jump keeps the turn until it calls again or ends.
bool beginRun();
void endRun();

}  // namespace frigana
