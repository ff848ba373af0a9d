// What the sources of saturation share: selectors of a phase and of a line, and the messages that several of them send.
#pragma once

#include "EngineLimits.h"
#include "Message.h"
#include "SilentMessages.h"

namespace frigana {

// Selectors of a phase in calls of TPRHO. A negative one forces the side of the density.
inline constexpr int liquidPhase = 1;
inline constexpr int vaporPhase = 2;

// True if an ancillary equation stands behind the tag.
inline bool hasAncillary(const Text3& tag) {
    return !tag.blank() && !(tag == "NBS");
}

// What an inner message says, without the blanks and the null character at its end, to be set into an outer one.
std::string_view innerText(const Text255& text);

// The message "HEADING inner message", the inner one cut so that the null character stands at the last place at most.
inline void wrapMessage(std::string_view heading, Text255& herr) {
    message(herr, heading, Character{Text255::size - 1 - static_cast<int>(heading.size()), herr.view()}, nullCharacter);
}

// The message "HEADINGnnn; inner message", nnn in three places.
inline void passMessage(Text255& herr, std::string_view heading, int pass) {
    message(herr, heading, Integer{3, pass}, "; ",
            Character{Text255::size - 6 - static_cast<int>(heading.size()), herr.view()}, nullCharacter);
}

// "... T =ggg K, Tcrit =ggg K." of a temperature above the critical one, with its code 121.
void temperatureAboveCritical(std::string_view heading, double T, double Tc, int& ierr, Text255& herr);

// A temperature above the critical one in SATT.
void temperatureAboveCritical(double T, double Tc, int& ierr, Text255& herr);

// "[SATT error nnn] iteration for saturation state did not converge; T =ggg K." and its sister of SATP.
void notConvergedAtTemperature(int code, double T, int& ierr, Text255& herr);
void notConvergedAtPressure(int code, double p, int& ierr, Text255& herr);

}  // namespace frigana
