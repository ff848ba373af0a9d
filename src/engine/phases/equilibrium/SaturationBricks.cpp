#include "SaturationBricks.h"

#include "UTILITY.h"

namespace frigana {

std::string_view innerText(const Text255& text) {
    std::string_view inner = text.trimmed();
    while (!inner.empty() && (inner.back() == '\0' || inner.back() == ' ')) inner.remove_suffix(1);
    return inner;
}

void temperatureAboveCritical(std::string_view heading, double T, double Tc, int& ierr, Text255& herr) {
    ierr = 121;
    message(herr, heading, General{12, 5, T}, " K, Tcrit =", General{12, 5, Tc}, " K.", nullCharacter);
    ERRMSG(ierr, herr);
}

void temperatureAboveCritical(double T, double Tc, int& ierr, Text255& herr) {
    temperatureAboveCritical(
        "[SATT error 121] temperature input to saturation routine is greater than critical temperature; T =", T, Tc,
        ierr, herr);
}

void notConvergedAtTemperature(int code, double T, int& ierr, Text255& herr) {
    ierr = code;
    message(herr, "[SATT error", Integer{4, code},
            "] iteration for saturation state did not converge; T =", General{12, 5, T}, " K.", nullCharacter);
    ERRMSG(ierr, herr);
}

void notConvergedAtPressure(int code, double p, int& ierr, Text255& herr) {
    ierr = code;
    message(herr, "[SATP error", Integer{4, code},
            "] iteration for saturation state did not converge; P =", General{12, 5, p / 1000.0}, " MPa.",
            nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace frigana
