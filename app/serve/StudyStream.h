// A study as a stream of lines, each of them JSON.
#pragma once

#include "Http.h"
#include "Pool.h"
#include "Study.h"

namespace frigana::serve {

// Runs a study on the pool. The lines, in this order:
//   {"cases": N, "inputs": [keys], "keys": [keys]}
//   {"case": 0, "inputs": [values], "values": [values]}                or "error": {"code": ..., "text": ...}
//   ...
//   {"done": true, "cases": N, "refused": N, "seconds": S}             or "done": false with "reason"
// Ends early when nobody listens.
void streamStudy(workers::Pool& pool, const studies::Study& study, const http::Write& write);

}  // namespace frigana::serve
