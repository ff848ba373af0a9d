/* The mathematical functions of the run-time library over the arguments that the equations give them, to a file of
 * doubles: functions FILE. What two systems write is compared by tools/compare_functions.py.
 */
#include <math.h>
#include <stdint.h>
#include <stdio.h>

enum { samples = 50000 };

/* Xorshift of 64 bits; the same on every system. */
static uint64_t state = 88172645463325252u;

static double between(double low, double high) {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return low + (high - low) * ((double)(state >> 11) / 9007199254740992.0);
}

int main(int argc, char** argv) {
    FILE* file;
    int i;
    if (argc != 2 || (file = fopen(argv[1], "wb")) == NULL) return 1;
    for (i = 0; i < samples; ++i) {
        const double base = between(0.05, 4.0), exponent = between(-2.0, 10.0);
        /* In the order of the names in tools/compare_functions.py. */
        const double values[] = {exp(between(-20.0, 10.0)),   log(between(0.001, 20.0)),
                                 pow(base, exponent),         pow(base, floor(between(1.0, 20.0))),
                                 log10(between(0.001, 20.0)), cbrt(between(0.01, 10.0)),
                                 sinh(between(0.1, 5.0)),     cosh(between(0.1, 5.0)),
                                 tanh(between(0.1, 5.0)),     atan(between(-3.0, 3.0))};
        if (fwrite(values, sizeof values, 1, file) != 1) return 1;
    }
    return fclose(file) == 0 ? 0 : 1;
}
