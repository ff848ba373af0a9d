// The time of the processor that one input may take. The clock on the wall tells nothing on a busy machine.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <ctime>

// What people are told of; more under the sanitizers.
#ifndef FRIGANA_LONGEST_RUN
#define FRIGANA_LONGEST_RUN 2.0
#endif

namespace frigana::fuzz {

class ProcessorTime {
  public:
    double seconds() const { return static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC; }
    bool tooLong() const { return seconds() > FRIGANA_LONGEST_RUN; }

  private:
    std::clock_t start_ = std::clock();
};

// Ends the fuzzer where what follows in the same block took too long.
class TimeLimit {
  public:
    TimeLimit() = default;
    ~TimeLimit() {
        if (!time_.tooLong()) return;
        std::printf("it took %f s\n", time_.seconds());
        std::abort();
    }
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

  private:
    ProcessorTime time_;
};

}  // namespace frigana::fuzz
