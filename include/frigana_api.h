/* Frigana for programs: named requests from JSON to JSON, and properties of a fluid over arrays. The C interface of
 * libfrigana_api; link with -lfrigana_api.
 *
 * Units are K, kPa, kg/m3, m3/kg, kJ/kg, kJ/(kg K), m/s, kW, W/(m K), uPa s, N/m. Texts are UTF-8 and end with a null
 * character. A text that a call hands out belongs to the caller, who gives it back by frigana_free.
 *
 * All calls may come from any thread. The library holds one engine: calls queue, and a fork waits for the one in work.
 * A host that wants work side by side starts processes. No call touches signal handlers. libfrigana may be loaded beside
 * this library: each has an engine of its own.
 */
#ifndef FRIGANA_API_H
#define FRIGANA_API_H

#include <stddef.h>

#if defined(_WIN32)
#define FRIGANA_CALL __declspec(dllexport)
#else
#define FRIGANA_CALL __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* What a call returns. */
enum frigana_status {
    FRIGANA_DONE = 0,
    FRIGANA_REFUSED = 1, /* the calculation was refused; the answer tells code and reason */
    FRIGANA_FAULTY = 2,  /* what was asked for cannot be read; the answer tells why */
    FRIGANA_FAILED = 3   /* no memory, no data folder, or a fault of the library; frigana_last_error tells */
};

/* "1.0.0" */
FRIGANA_CALL const char* frigana_version(void);

/* Chooses the folder that holds the folders fluids and mixtures, for the whole process. Without this call it is what the
 * environment names in FRIGANA_DATA, else the one that came with the library. Handles of fluids keep theirs.
 *   Returned  FRIGANA_FAULTY where there is no folder fluids in it
 */
FRIGANA_CALL int frigana_set_data(const char* folder);

/* What went wrong in the last call of this thread that returned another status than FRIGANA_DONE; empty before. The text
 * is valid until the next call of the thread. */
FRIGANA_CALL const char* frigana_last_error(void);

/* Gives back a text. Null is allowed. */
FRIGANA_CALL void frigana_free(char* text);

/* ---- requests ---------------------------------------------------------------------------------------------------- */

/* Runs a named request. A blend is stored among the person's own, from where every call knows it by name.
 *   Given     request  a named request as in docs/requests.md: JSON where it begins with {, else TOML
 *   Returned  answer   JSON: as `frigana run --json` writes it (FRIGANA_DONE, FRIGANA_REFUSED), or
 *                      {"error": {"code", "text", "problems": [{"line", "text", "key", "allowed"}]}} (FRIGANA_FAULTY);
 *                      null for FRIGANA_FAILED
 */
FRIGANA_CALL int frigana_run(const char* request, char** answer);

/* Draws charts: of a result, a fluid, or vapor pressures.
 *   Given     chart    JSON: {"kind": "ph" | "ts" | "hs", "request": {...}}, {"kind": ..., "fluid": "R134a"} or
 *                      {"kind": "pT", "fluids": [...]}, with "units", "width", "height", "reference" where wanted
 *   Returned  answer   JSON: {"charts": [{"circuit", "title", "svg", ...}], "remarks": [...]}, or an error as above
 */
FRIGANA_CALL int frigana_chart(const char* chart, char** answer);

/* Lists as JSON: the requests with their keys, options and limits; the fluids and blends of the data folder, and after
 * them the person's own blends. */
FRIGANA_CALL int frigana_list_requests(char** answer);
FRIGANA_CALL int frigana_list_fluids(char** answer);

/* ---- properties -------------------------------------------------------------------------------------------------- */

enum frigana_property {
    FRIGANA_TEMPERATURE = 1,    /* K */
    FRIGANA_PRESSURE,           /* kPa */
    FRIGANA_DENSITY,            /* kg/m3 */
    FRIGANA_ENTHALPY,           /* kJ/kg */
    FRIGANA_ENTROPY,            /* kJ/(kg K) */
    FRIGANA_QUALITY,            /* vapor over all, by mass; not a number in a single phase */
    FRIGANA_VOLUME,             /* m3/kg */
    FRIGANA_ENERGY,             /* kJ/kg */
    FRIGANA_ISOCHORIC_HEAT,     /* kJ/(kg K); not a number between liquid and vapor, as the next two */
    FRIGANA_ISOBARIC_HEAT,      /* kJ/(kg K) */
    FRIGANA_SPEED_OF_SOUND,     /* m/s */
    FRIGANA_CONDUCTIVITY,       /* W/(m K); of single phases and saturated ones, as the next two */
    FRIGANA_VISCOSITY,          /* uPa s */
    FRIGANA_PRANDTL,            /* - */
    FRIGANA_SURFACE_TENSION,    /* N/m; of saturated states and two phases */
    FRIGANA_PHASE,              /* one of frigana_phase, as a number */
    FRIGANA_LIQUID_DENSITY,     /* kg/m3; of the phases of saturated states and two phases, as all that follow */
    FRIGANA_VAPOR_DENSITY,      /* kg/m3 */
    FRIGANA_LIQUID_FRACTION = 100, /* + i: mass fraction of component i, from 1, in the liquid */
    FRIGANA_VAPOR_FRACTION = 200   /* + i: in the vapor */
};

enum frigana_phase { FRIGANA_LIQUID = 1, FRIGANA_VAPOR, FRIGANA_TWO_PHASES, FRIGANA_SUPERCRITICAL };

/* Codes of states beside those of the engine, which are below 1000. */
enum frigana_state_code {
    FRIGANA_NOT_FINITE = 9001,          /* a given value is not a finite number */
    FRIGANA_NO_SUCH_STATE = 9002,       /* no saturated state of this quality has the other given value */
    FRIGANA_QUALITY_OUT_OF_RANGE = 9003 /* a quality lies between 0 and 1 */
};

/* Size of the text of a state, with its null character. */
#define FRIGANA_TEXT 256

typedef struct frigana_fluid frigana_fluid;

/* Opens a fluid.
 *   Given     description  its name, as R134a, propane or R410A; or JSON as a named request says it:
 *                          {"fluid": {"R32": 0.689, "R1234yf": 0.311}, "fractions": "mass", "reference_state": "IIR"}
 *   Returned  fluid        to be closed by frigana_fluid_close; null where the status is not FRIGANA_DONE
 */
FRIGANA_CALL int frigana_fluid_open(const char* description, frigana_fluid** fluid);
/* Not while another thread uses the handle. Null is allowed. */
FRIGANA_CALL void frigana_fluid_close(frigana_fluid* fluid);

/* JSON of its name, components, molar mass, critical point, limits, and of a pure fluid its triple and boiling point. */
FRIGANA_CALL int frigana_fluid_facts(const frigana_fluid* fluid, char** answer);

/* States from two properties.
 *   Given     first, second  two of the letters T, P, D, H, S, Q, in any order
 *             firstValues, secondValues  count values of each
 *             properties     numbers of the properties wanted, propertyCount of them
 *   Returned  results        propertyCount columns of count values: results[k * count + i] is property k of state i; not
 *                            a number where a state failed or has no such property
 *             codes          count codes: 0, a warning (negative, the results can be used) or an error; may be null
 *             texts          count texts of these codes, empty for 0; may be null
 *             (value)        FRIGANA_DONE, also where states failed; FRIGANA_FAULTY where nothing could be calculated
 *   Notes     Of several states with the same two properties the one of lower density is given (temperature with enthalpy
 *             or entropy), or that of the lowest temperature (quality with density, enthalpy or entropy).
 */
FRIGANA_CALL int frigana_states(const frigana_fluid* fluid, char first, char second, const double* firstValues,
                                const double* secondValues, size_t count, const int* properties, size_t propertyCount,
                                double* results, int* codes, char (*texts)[FRIGANA_TEXT]);

/* Saturated states at the fluid's own composition.
 *   Given     given   'T' or 'P', of the values
 *             dew     0 the bubble point, else the dew point
 *   The rest as frigana_states.
 */
FRIGANA_CALL int frigana_saturation(const frigana_fluid* fluid, char given, int dew, const double* values, size_t count,
                                    const int* properties, size_t propertyCount, double* results, int* codes,
                                    char (*texts)[FRIGANA_TEXT]);

#ifdef __cplusplus
}
#endif

#endif
