// A request of every cycle that passes its check, to be spoilt in one place.
#pragma once

#include <initializer_list>
#include <span>
#include <string>

#include "12_MyVariables.h"
#include "RangeCheckCases.h"

struct CycleRequest {
    int reqsub = 0;
    frigana::CYCLEIN first{};
    frigana::CYCLEIN second{};  // of the combined, cascade and pumped systems

    frigana::CYCLEIN& record(int number) { return number == 1 ? first : second; }
    void set(const Change& change);
};

inline constexpr int cyclesWithCheck[] = {1, 2, 3, 4, 5, 6, 7, 9, 10, 11, 12, 13, 14};

bool hasTwoFluids(int reqsub);
CycleRequest passingRequest(int reqsub);

// The text of the request file, with as many digits as a value needs to be read back unchanged.
std::string requestText(const CycleRequest& request);
