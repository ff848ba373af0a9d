/* Properties, saturation and a cycle from C.
 *
 *   cc -Iinclude examples/properties.c -Lbuild/release/lib -lfrigana_api -Wl,-rpath,$PWD/build/release/lib -o properties
 */
#include <frigana_api.h>
#include <stdio.h>
#include <string.h>

#define STATES 4

static const char* const chiller =
    "request = \"basic\"\n"
    "fluid = \"R134a\"\n"
    "evaporator = { temperature = \"-5 °C\", superheat = \"5 K\" }\n"
    "compressor = { swept_volume = \"0.0028 m3/s\", isentropic_efficiency = 0.7, volumetric_efficiency = 0.85 }\n"
    "condenser = { temperature = \"40 °C\", subcooling = \"3 K\" }\n";

/* Enthalpy and density at 10 bar and several temperatures; the last one lies outside the equation of state. */
static int states(const frigana_fluid* fluid) {
    const double temperatures[STATES] = {280.0, 300.0, 340.0, 900.0};
    const double pressures[STATES] = {1000.0, 1000.0, 1000.0, 1000.0};
    const int wanted[] = {FRIGANA_ENTHALPY, FRIGANA_DENSITY};
    double results[2 * STATES];
    int codes[STATES], i;
    char texts[STATES][FRIGANA_TEXT];
    if (frigana_states(fluid, 'T', 'P', temperatures, pressures, STATES, wanted, 2, results, codes, texts) != FRIGANA_DONE)
        return 0;
    for (i = 0; i < STATES; ++i) {
        if (codes[i] > 0)
            printf("%g K: %s\n", temperatures[i], texts[i]);
        else
            printf("%g K: h = %.3f kJ/kg, d = %.3f kg/m3\n", temperatures[i], results[i], results[STATES + i]);
    }
    return 1;
}

static int saturation(const frigana_fluid* fluid) {
    const double temperature = 268.15;
    const int wanted = FRIGANA_PRESSURE;
    double pressure;
    if (frigana_saturation(fluid, 'T', 0, &temperature, 1, &wanted, 1, &pressure, NULL, NULL) != FRIGANA_DONE) return 0;
    printf("saturated at %g K: p = %.3f kPa\n", temperature, pressure);
    return 1;
}

/* The coefficient of performance stands in the answer behind its key. */
static int cycle(void) {
    char* answer = NULL;
    const char *key, *value;
    const int done = frigana_run(chiller, &answer) == FRIGANA_DONE;
    key = done ? strstr(answer, "\"performance.cop_cooling\"") : NULL;
    value = key != NULL ? strstr(key, "\"value\": ") : NULL;
    if (value != NULL) printf("COP of cooling: %.4s\n", value + strlen("\"value\": "));
    frigana_free(answer);
    return value != NULL;
}

int main(void) {
    frigana_fluid* fluid = NULL;
    int good = frigana_fluid_open("R134a", &fluid) == FRIGANA_DONE;
    good = good && states(fluid) && saturation(fluid) && cycle();
    if (!good) fprintf(stderr, "%s\n", frigana_last_error());
    frigana_fluid_close(fluid);
    return good ? 0 : 1;
}
