// Functions that are compiled twice: for every processor, and for those with registers of four numbers (AVX2). The
// program takes the one that its processor has when it starts.
//
// Every number goes through the same operations in the same order, and products are nowhere contracted with sums, so
// that both give the same bits. Systems without such a choice at the start have the first alone, and so has a build
// with a sanitizer, whose own functions are not there yet when the choice is made, and one that counts what the tests
// reach: a machine runs one of the two, and the other would count as not reached.
#pragma once

#include <cstdlib>

#if defined(__x86_64__) && defined(__GLIBC__) && defined(__GNUC__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) && !defined(FRIGANA_COVERAGE)
#define FRIGANA_WIDE_LOOPS __attribute__((target_clones("avx2", "default")))
#else
#define FRIGANA_WIDE_LOOPS
#endif
