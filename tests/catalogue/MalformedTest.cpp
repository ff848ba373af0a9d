// Named requests that cannot be run, each with all that is said of it.
#include <gtest/gtest.h>

#include "NamedRequest.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

const FluidNames& names() {
    return FluidNames::of(test::dataFolder);
}

std::string said(const std::string& text, NamedFormat format) {
    const NamedRequest named = readNamed(text, format, names());
    EXPECT_EQ(named.problems.empty(), !named.runs.empty());
    std::string all;
    for (const Problem& problem : named.problems) all += message("a.toml", problem) + '\n';
    return all;
}

// A whole request, one line of which is replaced, left out or put behind.
const std::string chiller =
    "request = \"basic\"\n"               // 1
    "title = \"Chiller\"\n"               // 2
    "fluid = \"R134a\"\n"                 // 3
    "[evaporator]\n"                      // 4
    "temperature = \"-5 °C\"\n"           // 5
    "superheat = \"5 K\"\n"               // 6
    "[compressor]\n"                      // 7
    "swept_volume = \"0.0028 m3/s\"\n"    // 8
    "isentropic_efficiency = 0.7\n"       // 9
    "volumetric_efficiency = \"85 %\"\n"  // 10
    "[condenser]\n"                       // 11
    "temperature = \"40 °C\"\n"           // 12
    "subcooling = \"3 K\"\n";             // 13

struct Change {
    int line;          // line that gives way to the text; 0 puts the text behind the last line
    const char* text;  // "" leaves the line out
    const char* said;  // whole messages
};

std::string changed(const std::string& text, int line, const std::string& replacement) {
    if (line == 0) return text + replacement + '\n';
    std::size_t begin = 0;
    for (int i = 1; i < line; ++i) begin = text.find('\n', begin) + 1;
    const std::size_t end = text.find('\n', begin) + 1;
    return text.substr(0, begin) + (replacement.empty() ? "" : replacement + '\n') + text.substr(end);
}

constexpr const char* temperatureUnits = "(K, °C, °F, °R)";
constexpr const char* known =
    "fluid-information, saturation-table, isoproperty-table, state-point, equilibrium-phases, saturation-point, "
    "store-blend, basic, heat-exchanger, combined, cascade, line-sizing, rankine, transcritical, liquid-injection, "
    "two-stage, multi-stage, minimal, pumped-co2, booster";

const Change changes[] = {
    // What is asked for.
    {1, "request = \"basics\"", "a.toml:1: request = basics: there is no such request; near is basic\n"},
    {1, "request = 1", "a.toml:1: request = 1: there is no such request; allowed are %KNOWN%\n"},
    {1, "request = \"Basic\"", "a.toml:1: request = Basic: there is no such request; near is basic\n"},
    {1, "", "a.toml: missing: request; one of %KNOWN%\n"},
    {1, "request = \"\"", "a.toml:1: request = an empty text: there is no such request; allowed are %KNOWN%\n"},
    // The form.
    {5, "temperature = -5 °C",
     "a.toml:5: this is no TOML: a value with a sign such as ° stands in quotes, as in \"-5 °C\"\n"},
    {6, "# 5 °C\nsuperheat° = \"5 K\"",
     "a.toml:7: this is no TOML: a value with a sign such as ° stands in quotes, as in \"-5 °C\"\n"},
    {5, "temperature = ", "a.toml:5: this is no TOML: %"},
    {5, "temperature = 4m\"0 °C\"", "a.toml:5: this is no TOML: %"},
    {4, "[evaporator", "a.toml:4: this is no TOML: %"},
    {5, "temperature = \"-5 °C", "a.toml:5: this is no TOML: %"},
    {6, "temperature = \"5 °C\"", "a.toml:6: this is no TOML: %"},
    {7, "[evaporator]", "a.toml:7: this is no TOML: %"},
    {2, "title = \"a\" title", "a.toml:2: this is no TOML: %"},
    {2, "title = 'a", "a.toml:2: this is no TOML: %"},
    // Titles.
    {2, "title = 7", "a.toml:2: title = 7: a title is a text in quotes\n"},
    {2, "title = \"two\\nlines\"", "a.toml:2: title: a title is one line without tabs\n"},
    {2, "title = \"a\\tb\"", "a.toml:2: title: a title is one line without tabs\n"},
    {2, "title = \"123456789 123456789 123456789 123456789 123456789 123456789 123456789 123456789 1\"",
     "a.toml:2: title: a title has at most 80 characters, this one has 81\n"},
    {2, "title = [\"a\"]", "a.toml:2: title = a list: a title is a text in quotes\n"},
    // Fluids.
    {3, "fluid = \"R134b\"", "a.toml:3: fluid = R134b: is no fluid or blend of the installation; near is R134a\n"},
    {3, "fluid = \"amonia\"", "a.toml:3: fluid = amonia: is no fluid or blend of the installation; near is %"},
    {3, "fluid = \"entirely unknown\"",
     "a.toml:3: fluid = entirely unknown: is no fluid or blend of the installation\n"},
    {3, "fluid = 134", "a.toml:3: fluid = 134: a fluid is a name, or a table of components and fractions\n"},
    {3, "fluid = [\"R32\", \"R125\"]",
     "a.toml:3: fluid = a list: a fluid is a name, or a table of components and fractions\n"},
    {3, "", "a.toml: missing: fluid\n"},
    {3, "fluid = { R32 = 0.5, R32a = 0.5 }",
     "a.toml:3: fluid.R32a: R32a is no fluid or blend of the installation; near %"},
    {3, "fluid = { R32 = 0.5, R410A = 0.5 }", "a.toml:3: fluid.R410A: a blend is mixed from pure fluids\n"},
    {3, "fluid = { R32 = 0.5, r-32 = 0.5 }", "a.toml:3: fluid.r-32: stands in the blend twice\n"},
    {3, "fluid = { R32 = -0.5, R125 = 1.5 }", "a.toml:3: fluid.R32 = -0.5: a fraction is not below 0\n"},
    {3, "fluid = { R32 = true, R125 = 1.5 }", "a.toml:3: fluid.R32 = true: is no fraction; write 0.7 or \"70 %\"\n"},
    {3, "fluid = { R32 = 0, R125 = 0 }", "a.toml:3: fluid: all fractions are 0\n"},
    {3, "fluid = { R32 = 0.5, R125 = 0.4 }\nfractions = \"mole\"",
     "a.toml:3: fluid: the mole fractions add up to 0.9, not to 1\n"},
    {3, "fluid = { R32 = 0.5, R125 = 0.5 }\nfractions = \"weight\"",
     "a.toml:4: fractions = weight: allowed are mass and mole\n"},
    {3, "fluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = \"a/b\"",
     "a.toml:4: blend_name = a/b: a blend has the name of a file, with at most 60 characters\n"},
    {3, "fluid = \"R134a\"\nfractions = \"mass\"",
     "a.toml:4: fractions = mass: fractions are those of a blend that is listed by its components\n"},
    {3, "fluid = {}", "a.toml:3: fluid: all fractions are 0\n"},
    {3, "fluid = { R32 = \"half\", R125 = 0.5 }",
     "a.toml:3: fluid.R32 = half: is not a number with a unit; write 0.7 or \"70 %\"\n"},
    {3, "fluid = { R32 = \"5 kg\", R125 = 0.5 }",
     "a.toml:3: fluid.R32 = 5 kg: has the unit kg, which is none of a fraction (%)\n"},
    {3, "fluid = { R32 = \"-30 %\", R125 = 0.5 }", "a.toml:3: fluid.R32 = -30 %: a fraction is not below 0\n"},
    {3, "fluid = { R32 = inf, R125 = 0.5 }", "a.toml:3: fluid.R32 = inf: is not finite\n"},
    {3, "fluid = { R32 = nan, R125 = 0.5 }", "a.toml:3: fluid.R32 = nan: is not finite\n"},
    {3,
     "fluid = { R32 = 1, R125 = 1, R134a = 1, R143a = 1, R152a = 1, R22 = 1, R23 = 1, R218 = 1, R116 = 1, R227ea = 1, "
     "R236fa = 1, R236ea = 1, R245fa = 1, R245ca = 1, R123 = 1, R124 = 1, R141b = 1, R142b = 1, R11 = 1, R12 = 1, "
     "R13 = 1 }",
     "a.toml:3: fluid: a blend has at most 20 components\n"},
    {3, "fluid = { R32 = 0.5, R125 = 0.5 }\nfractions = 1", "a.toml:4: fractions = 1: allowed are mass and mole\n"},
    {3, "fluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = 7",
     "a.toml:4: blend_name = 7: a blend has the name of a file, with at most 60 characters\n"},
    {3, "fluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = \"\"",
     "a.toml:4: blend_name = an empty text: a blend has the name of a file, with at most 60 characters\n"},
    {3,
     "fluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = \"123456789 123456789 123456789 123456789 123456789 123456789 "
     "1\"",
     "a.toml:4: blend_name = 123456789 123456789 123456789 123456789 123456789 123456789 1: a blend has the name of a "
     "file, with at most 60 characters\n"},
    {3, "fluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = \"a\\tb\"",
     "a.toml:4: blend_name = a\tb: a blend has the name of a file, with at most 60 characters\n"},
    {3, "fluid = \"R134a\"\nreference_state = \"ISO\"",
     "a.toml:4: reference_state = ISO: allowed are DEF (of the fluid file), IIR, ASHRAE and NBP\n"},
    {3, "fluid = \"R134a\"\nreference_state = 0",
     "a.toml:4: reference_state = 0: allowed are DEF (of the fluid file), IIR, ASHRAE and NBP\n"},
    {3, "fluid = \"R134a\"\nreference_of = \"me\"",
     "a.toml:4: reference_of = me: allowed are composition and pure fluids\n"},
    {3, "fluid = \"R134a\"\nreference_of = 1", "a.toml:4: reference_of = 1: allowed are composition and pure fluids\n"},
    // Units.
    {2, "units = \"english\"", "a.toml:2: units = english: allowed are SI, metric and imperial\n"},
    {2, "units = 1", "a.toml:2: units = 1: allowed are SI, metric and imperial\n"},
    {5, "temperature = -5",
     "a.toml:5: evaporator.temperature = -5: has no unit; write \"-5 °C\", or units = \"SI\" at the top\n"},
    {5, "temperature = \"-5\"",
     "a.toml:5: evaporator.temperature = -5: has no unit; write \"-5 °C\", or units = \"SI\" at the top\n"},
    {5, "temperature = \"-5 bar\"",
     "a.toml:5: evaporator.temperature = -5 bar: has the unit bar, which is none of a temperature %TEMPERATURE%\n"},
    {5, "temperature = \"cold\"",
     "a.toml:5: evaporator.temperature = cold: is not a number with a unit; write \"-5 °C\"\n"},
    {5, "temperature = \"\"",
     "a.toml:5: evaporator.temperature = an empty text: is not a number with a unit; write \"-5 °C\"\n"},
    {5, "temperature = true",
     "a.toml:5: evaporator.temperature = true: is not a number with a unit; write \"-5 °C\"\n"},
    {5, "temperature = [\"-5 °C\"]",
     "a.toml:5: evaporator.temperature = a list: is not a number with a unit; write \"-5 °C\"\n"},
    {5, "temperature = 1979-05-27",
     "a.toml:5: evaporator.temperature = a date or time: is not a number with a unit; write \"-5 °C\"\n"},
    {5, "temperature = \"1.2.3 °C\"",
     "a.toml:5: evaporator.temperature = 1.2.3 °C: is not a number with a unit; write \"-5 °C\"\n"},
    {5, "temperature = \"--5 °C\"",
     "a.toml:5: evaporator.temperature = --5 °C: is not a number with a unit; write \"-5 °C\"\n"},
    {5, "temperature = \"1e999 K\"",
     "a.toml:5: evaporator.temperature = 1e999 K: is not a number with a unit; write \"-5 °C\"\n"},
    {5, "pressure = \"1,200 kPa\"",
     "a.toml:5: evaporator.pressure = 1,200 kPa: has a comma that may be the decimal one or may not; write a point\n"},
    {5, "pressure = \"1.200,5 kPa\"",
     "a.toml:5: evaporator.pressure = 1.200,5 kPa: has a comma that may be the decimal one or may not; write a "
     "point\n"},
    {5, "pressure = \"1,2,3 bar\"",
     "a.toml:5: evaporator.pressure = 1,2,3 bar: has a comma that may be the decimal one or may not; write a point\n"},
    {5, "pressure = \"2.4 at\"",
     "a.toml:5: evaporator.pressure = 2.4 at: has the unit at, which is none of a pressure (kPa, bar, bar(g), kPa(g), "
     "MPa, Pa, mbar, psi, psig, atm)\n"},
    {6, "superheat = \"5 bar\"",
     "a.toml:6: evaporator.superheat = 5 bar: has the unit bar, which is none of a temperature difference (K, °F)\n"},
    {6, "superheat = 5",
     "a.toml:6: evaporator.superheat = 5: has no unit; write \"5 K\", or units = \"SI\" at the top\n"},
    {6, "superheat = \"5 K\"\npressure_drop = \"1 bar(g)\"",
     "a.toml:7: evaporator.pressure_drop = 1 bar(g): is not a difference of pressures: a difference has no gauge; "
     "write "
     "\"10 kPa\"\n"},
    {8, "swept_volume = \"10 kg/h\"",
     "a.toml:8: compressor.swept_volume = 10 kg/h: has the unit kg/h, which is none of a volume flow (m3/s, m3/h, L/s, "
     "L/min, L/h, cm3/s, ft3/min, ft3/h)\n"},
    {9, "isentropic_efficiency = \"seventy\"",
     "a.toml:9: compressor.isentropic_efficiency = seventy: is not a number with a unit; write 0.7 or \"70 %\"\n"},
    {9, "isentropic_efficiency = nan", "a.toml:9: compressor.isentropic_efficiency = nan: is not finite\n"},
    // Limits, in the unit of the file.
    {5, "temperature = \"-200 °C\"",
     "a.toml:5: evaporator.temperature = -200 °C: allowed are -173.15 °C to 326.85 °C\n"},
    {5, "temperature = \"-400 °F\"",
     "a.toml:5: evaporator.temperature = -400 °F: allowed are -279.67 °F to 620.33 °F\n"},
    {5, "temperature = \"-5 K\"", "a.toml:5: evaporator.temperature = -5 K: allowed are 100 K to 600 K\n"},
    {5, "pressure = \"90 bar\"", "a.toml:5: evaporator.pressure = 90 bar: allowed are 0.001 bar to 80 bar\n"},
    {5, "pressure = \"2000 psig\"",
     "a.toml:5: evaporator.pressure = 2000 psig: allowed are -14.681445 psig to 1145.606 psig\n"},
    {6, "superheat = \"-1 K\"", "a.toml:6: evaporator.superheat = -1 K: allowed are 0 K to 200 K\n"},
    {6, "superheat = \"400 °F\"", "a.toml:6: evaporator.superheat = 400 °F: allowed are 0 °F to 360 °F\n"},
    {8, "swept_volume = \"0 m3/h\"",
     "a.toml:8: compressor.swept_volume = 0 m3/h: allowed are 0.36 m3/h to 2880000 m3/h\n"},
    {8, "capacity.evaporator = \"1 W\"",
     "a.toml:8: compressor.capacity.evaporator = 1 W: allowed are 200 W to 800000000 W\n"},
    {8, "capacity.evaporator = \"0.2 kW\"",
     "a.toml:8: compressor.capacity.evaporator = 0.2 kW: allowed are 0.2 kW to 800000 kW; the limit is kept in single "
     "precision as 0.200000003, so that a value must be a little above it\n"},
    {9, "isentropic_efficiency = 70", "a.toml:9: compressor.isentropic_efficiency = 70: allowed are 0.25 to 1\n"},
    {9, "isentropic_efficiency = \"120 %\"",
     "a.toml:9: compressor.isentropic_efficiency = 120 %: allowed are 25 % to 100 %\n"},
    {12, "pressure = \"0.1 bar\"", "a.toml:12: condenser.pressure = 0.1 bar: allowed are 0.2 bar to 200 bar\n"},
    // Keys.
    {5, "temprature = \"-5 °C\"",
     "a.toml: missing: evaporator.temperature or evaporator.pressure\n"
     "a.toml:5: evaporator.temprature is no key of basic; near is evaporator.temperature\n"},
    {4, "[evaporater]",
     "a.toml: missing: evaporator.temperature or evaporator.pressure; evaporator.outlet_temperature or "
     "evaporator.superheat\n"
     "a.toml:5: evaporater.temperature is no key of basic; near is evaporator.temperature\n"
     "a.toml:6: evaporater.superheat is no key of basic; near is evaporator.superheat\n"},
    {0, "[pump]\nspeed = \"2900 rpm\"", "a.toml:15: pump.speed is no key of basic\n"},
    {5, "temperature = \"-5 °C\"\npressure = \"2.4 bar\"",
     "a.toml:6: evaporator.pressure and evaporator.temperature (line 5) exclude each other; give one of them\n"},
    {8, "swept_volume = \"0.0028 m3/s\"\ncapacity = { evaporator = \"4 kW\" }",
     "a.toml:9: compressor.capacity.evaporator and compressor.swept_volume (line 8) exclude each other; give one of "
     "them\n"},
    {8, "capacity = \"4 kW\"",
     "a.toml: missing: compressor.swept_volume, compressor.capacity.condenser or compressor.capacity.evaporator\n"
     "a.toml:8: compressor.capacity is a table: compressor.capacity.condenser or compressor.capacity.evaporator\n"},
    {5, "", "a.toml: missing: evaporator.temperature or evaporator.pressure\n"},
    {0, "[pump]", "a.toml:14: pump is no key of basic\n"},
    {0, "[liquid_line]", ""},  // an empty heading asks for nothing
    {8, "capacity = {}",
     "a.toml: missing: compressor.swept_volume, compressor.capacity.condenser or compressor.capacity.evaporator\n"},
    {9, "", "a.toml: missing: compressor.isentropic_efficiency\n"},
    {13, "", "a.toml: missing: condenser.outlet_temperature or condenser.subcooling\n"},
    {0, "[liquid_line]\noutlet_subcooling = \"2 K\"\ntemperature_fall = \"1 K\"",
     "a.toml:16: liquid_line.temperature_fall and liquid_line.outlet_subcooling (line 15) exclude each other; give one "
     "of them\n"},
};

TEST(Malformed, EveryChangeOfAChillerIsToldWithLineKeyAndReason) {
    ASSERT_EQ(said(chiller, NamedFormat::toml), "");
    for (const Change& change : changes) {
        std::string expected = change.said;
        const auto put = [&](const std::string& mark, const char* text) {
            if (const auto at = expected.find(mark); at != std::string::npos) expected.replace(at, mark.size(), text);
        };
        put("%KNOWN%", known);
        put("%TEMPERATURE%", temperatureUnits);
        const std::string found = said(changed(chiller, change.line, change.text), NamedFormat::toml);
        // What the parser of the form says in its own words, and which names are near, is left to them.
        if (expected.ends_with('%'))
            EXPECT_EQ(found.substr(0, expected.size() - 1), expected.substr(0, expected.size() - 1)) << change.text;
        else
            EXPECT_EQ(found, expected) << change.text;
    }
    EXPECT_GE(std::size(changes), 80u);
}

struct Whole {
    const char* text;
    const char* said;
};

const Whole others[] = {
    // Several stages and circuits.
    {"request = \"multi-stage\"\nfluid = \"R134a\"\nstages = \"three\"\n",
     "a.toml:3: stages = three: is no whole number\n"},
    {"request = \"multi-stage\"\nfluid = \"R134a\"\nstages = 1\n", "a.toml:3: stages = 1: allowed are 2 to 7\n"},
    {"request = \"multi-stage\"\nfluid = \"R134a\"\nstages = 3\n[stage3]\ncompressor.isentropic_efficiency = 0.7\n",
     "a.toml:5: stage3.compressor.isentropic_efficiency is no key of multi-stage; near is "
     "stage1.compressor.isentropic_efficiency\n"},
    // What cannot be counted leaves no key unknown: the room of the records is for six stages below the last.
    {"request = \"multi-stage\"\nfluid = \"R134a\"\nstages = []\n[stage6]\ncompressor.isentropic_efficiency = 0.7\n",
     "a.toml:3: stages = a list: is no whole number\n"},
    {"request = \"cascade\"\n[high]\nfluid = { R32 = 0.5 }\nfractions = \"mole\"\n[low]\nfluid = { CO2 = \"x\" }\n",
     "a.toml:3: high.fluid: the mole fractions add up to 0.5, not to 1\n"
     "a.toml:6: low.fluid.CO2 = x: is not a number with a unit; write 0.7 or \"70 %\"\n"},
    {"request = \"cascade\"\nreference_state = \"ISO\"\n[high]\nfluid = \"R134a\"\nreference_state = \"IIR\"\n"
     "[low]\nfluid = \"CO2\"\n",
     "a.toml:2: reference_state = ISO: allowed are DEF (of the fluid file), IIR, ASHRAE and NBP\n"},
    {"request = \"cascade\"\ntitle = \"Cold store\"\n[high]\nfluid = \"R134a\"\ntitle = 5\n",
     "a.toml:5: high.title = 5: a title is a text in quotes\n"},
    {"request = \"basic\"\nfluid = \"R134a\"\n[evaporator]\npressure = \"2 bar\"\ntemperature = \"-5 °C\"\n",
     "a.toml:5: evaporator.temperature and evaporator.pressure (line 4) exclude each other; give one of them\n"},
    {"request = \"multi-stage\"\nfluid = \"R134a\"\nstages = 8\n", "a.toml:3: stages = 8: allowed are 2 to 7\n"},
    {"request = \"multi-stage\"\nfluid = \"R134a\"\nstages = 2.5\n", "a.toml:3: stages = 2.5: is no whole number\n"},
    {"request = \"cascade\"\nfluid = \"R134a\"\n", "a.toml:2: fluid is no key of cascade%"},
    {"request = \"cascade\"\n[low]\nfluid = \"CO2\"\ncompressor.capacity.condenser = \"5 kW\"\n",
     "a.toml:4: low.compressor.capacity.condenser is no key of cascade%"},
    {"request = \"line-sizing\"\nfluid = \"R134a\"\n[suction_line]\npipe.copper = 4\n",
     "a.toml:4: suction_line.pipe.copper = 4: allowed are 1 to 3\n"},
    {"request = \"line-sizing\"\nfluid = \"R134a\"\n[suction_line]\npipe.copper = 1.5\n",
     "a.toml:4: suction_line.pipe.copper = 1.5: is no whole number\n"},
    {"request = \"line-sizing\"\nfluid = \"R134a\"\n[liquid_line]\nreceiver = \"yes\"\n",
     "a.toml:4: liquid_line.receiver = yes: allowed are true and false\n"},
    {"request = \"two-stage\"\nfluid = \"R134a\"\nintermediate.geometric_mean = false\n",
     "a.toml:3: intermediate.geometric_mean = false: allowed is true; leave it out otherwise\n"},
    {"request = \"two-stage\"\nfluid = \"R134a\"\nheat_exchanger.liquid_temperature_fall = \"0 K\"\n",
     "a.toml:3: heat_exchanger.liquid_temperature_fall = 0 K: allowed are above 0 K and below 200 K\n"},
    {"request = \"line-sizing\"\nfluid = \"R134a\"\n[suction_line]\npipe.copper = 1\npicked = 0\n",
     "a.toml:5: suction_line.picked = 0: allowed are 1 to 6\n"},
    // Property requests.
    {"request = \"state-point\"\nfluid = \"R134a\"\ntemperature = \"25 °C\"\npoints = []\n",
     "a.toml:3: temperature belongs into points\n"
     "a.toml:4: points is a list of tables, one for each point\n"},
    {"request = \"state-point\"\nfluid = \"R134a\"\npoints = []\n",
     "a.toml:3: points is a list of tables, one for each point\n"},
    {"request = \"state-point\"\nfluid = \"R134a\"\npoints = [\n{ temperature = \"25 °C\", pressure = \"1 bar\" },\n7 "
     "]\n",
     "a.toml:5: points, point 2: a state point has two of temperature, pressure and density, here are 0\n"},
    {"request = \"state-point\"\nfluid = \"R134a\"\npoints = [\n{ temperature = \"25 °C\", pressure = \"1 bar\", "
     "quality = 0.5 } ]\n",
     "a.toml:4: points, point 1: quality is no key of a point\n"},
    {"request = \"equilibrium-phases\"\nfluid = \"R407C\"\npoints = [\n{ bubble.temperature = \"5 °C\" },\n{ } ]\n",
     "a.toml:5: points, point 2: missing: bubble.temperature, dew.temperature, bubble.pressure or dew.pressure\n"},
    {"request = \"equilibrium-phases\"\nfluid = \"R407C\"\ndew.temperature = \"5 °C\"\ndew.pressure = \"5 bar\"\n",
     "a.toml:4: dew.pressure and dew.temperature (line 3) exclude each other; give one of them\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nsuggested_limits = true\n", "a.toml: missing: property\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = 1\nsuggested_limits = true\n",
     "a.toml:3: property = 1: allowed are temperature and pressure\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = \"temperature\"\nfrom = \"0 °C\"\nto = \"9 "
     "°C\"\nsuggested_limits = true\n",
     "a.toml:4: from = 0 °C: suggested_limits asks for no table\n"
     "a.toml:5: to = 9 °C: suggested_limits asks for no table\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = \"temperature\"\nsuggested_limits = false\n",
     "a.toml:4: suggested_limits = false: allowed is true; leave it out otherwise\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = \"temperature\"\nfrom = \"0 °C\"\nto = \"9 "
     "°C\"\nstep = \"0 K\"\n",
     "a.toml:6: step = 0 K: a table needs a step; suggested_limits = true asks for the limits that suit the fluid\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = \"pressure\"\nfrom = \"9 bar\"\nto = \"1 "
     "bar\"\nstep = \"1 bar\"\n",
     "a.toml:6: step = 1 bar: the step leads away from the end of the table\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = \"temperature\"\nfrom = \"0 °C\"\nto = \"9 "
     "°C\"\ncount = 2.5\n",
     "a.toml:6: count = 2.5: is no whole number\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = \"temperature\"\nstep = \"1 K\"\ncount = 5\n",
     "a.toml: missing: from; to\n"
     "a.toml:5: count and step (line 4) exclude each other; give one of them\n"},
    {"request = \"isoproperty-table\"\nfluid = \"R134a\"\nproperty = \"pressure\"\nfrom = \"1 bar\"\nto = \"2 "
     "bar\"\nstep = \"1 bar\"\n",
     "a.toml: missing: constant.temperature, constant.pressure or constant.density\n"},
    {"request = \"store-blend\"\nfluid = 3\n",
     "a.toml: missing: blend_name\n"
     "a.toml:2: fluid = 3: a fluid is a name, or a table of components and fractions\n"
     "a.toml:2: fluid: a blend that is stored is listed by its components, as in { R32 = 0.5, R125 = 0.5 }\n"},
    {"request = \"store-blend\"\n", "a.toml: missing: fluid; blend_name\n"},
    {"request = \"state-point\"\nfluid = \"R134a\"\ntemperature = \"25 °C\"\n",
     "a.toml: a state point has two of temperature, pressure and density, here are 1\n"},
    {"request = \"state-point\"\nfluid = \"R134a\"\ntemperature = \"25 °C\"\npressure = \"1 bar\"\ndensity = \"5 "
     "kg/m3\"\n",
     "a.toml: a state point has two of temperature, pressure and density, here are 3\n"},
    {"request = \"state-point\"\nfluid = \"R134a\"\npoints = 3\n",
     "a.toml:3: points is a list of tables, one for each point\n"},
    {"request = \"state-point\"\nfluid = \"R134a\"\npoints = [ { temperature = \"25 °C\" } ]\n",
     "a.toml:3: points, point 1: a state point has two of temperature, pressure and density, here are 1\n"},
    {"request = \"state-point\"\nfluid = \"R134a\"\ntemperature = \"-300 °C\"\npressure = \"1 bar\"\n",
     "a.toml:3: temperature = -300 °C: is below absolute zero\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = \"density\"\n",
     "a.toml: missing: from; to; step, count or suggested_limits\n"
     "a.toml:3: property = density: allowed are temperature and pressure\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = \"temperature\"\nfrom = \"0 °C\"\nto = \"9 "
     "°C\"\nstep = "
     "\"-1 K\"\n",
     "a.toml:6: step = -1 K: the step leads away from the end of the table\n"},
    {"request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = \"temperature\"\nfrom = \"0 °C\"\nto = \"9 "
     "°C\"\ncount = "
     "1\n",
     "a.toml:6: count = 1: allowed are 3 to 2000\n"},
    {"request = \"isoproperty-table\"\nfluid = \"R134a\"\nconstant.pressure = \"1 bar\"\nproperty = \"pressure\"\nfrom "
     "= "
     "\"1 bar\"\nto = \"2 bar\"\nstep = \"1 bar\"\n",
     "a.toml:4: property = pressure: the property that runs is the one that is constant\n"},
    {"request = \"saturation-point\"\nfluid = \"R134a\"\n",
     "a.toml: missing: bubble.temperature, dew.temperature, bubble.pressure or dew.pressure\n"},
    {"request = \"store-blend\"\nfluid = \"R134a\"\nblend_name = \"x\"\n",
     "a.toml:2: fluid: a blend that is stored is listed by its components, as in { R32 = 0.5, R125 = 0.5 }\n"},
    {"request = \"store-blend\"\nfluid = { R32 = 0.5, R125 = 0.5 }\n", "a.toml: missing: blend_name\n"},
};

TEST(Malformed, WhatOtherRequestsRefuse) {
    for (const Whole& whole : others) {
        std::string found = said(whole.text, NamedFormat::toml), expected = whole.said;
        // Of cycles that lack nearly everything the list of what is missing is not the point.
        if (found.starts_with("a.toml: missing: ") && !expected.starts_with("a.toml: missing: "))
            found.erase(0, found.find('\n') + 1);
        if (expected.ends_with('%'))
            EXPECT_EQ(found.substr(0, expected.size() - 1), expected.substr(0, expected.size() - 1)) << whole.text;
        else
            EXPECT_EQ(found, expected) << whole.text;
    }
}

const Whole jsons[] = {
    {"", "a.toml:1: this is no JSON: unexpected end%"},
    {"{", "a.toml:1: this is no JSON: unexpected %"},
    {"[]", "a.toml:1: a request is a table of names and values, in braces\n"},
    {"{\"request\": \"basic\", \"request\": \"basic\"}", "a.toml:1: request: stands here twice\n"},
    {"{\n\"request\": \"state-point\",\n\"fluid\": \"R134a\",\n\"temperature\": null,\n\"pressure\": \"1 bar\"\n}",
     "a.toml:4: temperature = null: is not a number with a unit; write \"-5 °C\"\n"},
    {"{\n\"request\": \"state-point\",\n\"fluid\": \"R134a\",\n\"temperature\": 20,\n\"pressure\": \"1 bar\"\n}",
     "a.toml:4: temperature = 20: has no unit; write \"-5 °C\", or units = \"SI\" at the top\n"},
    {"{\n\"request\": \"state-point\",\n\"fluid\": \"R134a\"\n\"pressure\": \"1 bar\"\n}",
     "a.toml:4: this is no JSON: unexpected %"},
    {"{\"a\":[[[[[[[[[[[[[[[[[[[[1]]]]]]]]]]]]]]]]]]]]}",
     "a.toml:1: tables and lists stand in each other more than 16 deep\n"},
};

TEST(Malformed, JsonIsToldWithItsLines) {
    for (const Whole& whole : jsons) {
        const std::string found = said(whole.text, NamedFormat::json);
        std::string expected = whole.said;
        if (expected.ends_with('%')) {
            expected.pop_back();
            EXPECT_EQ(found.substr(0, expected.size()), expected) << whole.text;
        } else {
            EXPECT_EQ(found, expected) << whole.text;
        }
    }
}

}  // namespace
}  // namespace frigana::catalogue
