#include "CORE_ECS.h"

#include <cmath>

#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "ReaderReport.h"
#include "UTILITY.h"

namespace frigana {

SlotArray<EcsSlot> ecsTerms;

namespace {

// Adds c x^e and its derivatives in the variable that x is proportional to.
void addPower(double coefficient, double power, double x, double perUnit, double& value, double& first,
              double& second) {
    if (x <= 0.0 && power != std::floor(power)) return;
    const double term = coefficient * std::pow(x, power);
    value += term;
    if (x == 0.0) {
        if (power == 1.0) first += coefficient * perUnit;
        if (power == 2.0) second += 2.0 * coefficient * perUnit * perUnit;
        return;
    }
    first += term * power / x * perUnit;
    second += term * power * (power - 1.0) / (x * x) * perUnit * perUnit;
}

// The common form of both factors, before its scale.
ShapeFactor shape(const EcsSlot& slot, const EcsPolynomial& inTemperature, const EcsPolynomial& inDensity, int icomp,
                  double t, double rho) {
    ShapeFactor s{1.0, 0.0, 0.0, 0.0, 0.0, 0.0};
    const double tc = fluidConstants.TCRIT[icomp], dc = fluidConstants.DCRIT[icomp];
    const double difference = slot.ACFECS - slot.ACFREF;
    if (inTemperature.count >= 1) s.value += difference * inTemperature.coefficient[1];
    if (inTemperature.count >= 2) {
        const double c = difference * inTemperature.coefficient[2];
        s.value += c * std::log(t / tc);
        s.dT += c / t;
        s.dTT -= c / (t * t);
    }
    for (int k = 3; k <= inTemperature.count; ++k)
        addPower(inTemperature.coefficient[k], inTemperature.power[k], t / tc, 1.0 / tc, s.value, s.dT, s.dTT);
    for (int k = 1; k <= inDensity.count; ++k)
        addPower(inDensity.coefficient[k], inDensity.power[k], rho / dc, 1.0 / dc, s.value, s.dD, s.dDD);
    return s;
}

ShapeFactor operator*(double scale, const ShapeFactor& s) {
    return {scale * s.value, scale * s.dT, scale * s.dD, scale * s.dTT, scale * s.dTD, scale * s.dDD};
}

bool readPolynomial(int unit, EcsPolynomial& polynomial, int& ierr, Text255& herr) {
    if (!readCount(unit, "number of terms", mostEcsTerms, polynomial.count, ierr, herr)) return false;
    for (int k = 1; k <= polynomial.count; ++k)
        if (!readRecord(unit, "coefficient and power", ierr, herr, polynomial.coefficient[k], polynomial.power[k]))
            return false;
    return true;
}

}  // namespace

void FJ(int icomp, double t, double rho, ShapeFactor& f) {
    const EcsSlot& slot = ecsTerms[icomp];
    const double scale = fluidConstants.TCRIT[icomp] / fluidConstants.TCRIT[-icomp];
    f = scale * shape(slot, slot.FECS, slot.FDECS, icomp, t, rho);
}

void HJ(int icomp, double t, double rho, ShapeFactor& h) {
    const EcsSlot& slot = ecsTerms[icomp];
    const double scale =
        fluidConstants.DCRIT[-icomp] / fluidConstants.DCRIT[icomp] * (slot.ZCREF / fluidConstants.ZCRIT[icomp]);
    h = scale * shape(slot, slot.HECS, slot.HDECS, icomp, t, rho);
}

void CRTECS(int icomp, double& tc, double& pc, double& rhoc) {
    tc = fluidConstants.TCRIT[icomp];
    pc = fluidConstants.PCRIT[icomp];
    rhoc = fluidConstants.DCRIT[icomp];
}

void SETECS(int iunit, int icomp, const Text12& hcasn, Text255& hreff, Text3& heqn, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (iunit <= 0) {
        ierr = 101;
        message(herr, "[SETECS error 101] block data option not available for CAS # ", hcasn, nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    EcsSlot read{};
    Text3 heatCapacity;
    double tc, pc, dc;
    if (!readRecord(iunit, "lower temperature limit", ierr, herr, read.TMINECS)) return;
    if (!readRecord(iunit, "upper temperature limit", ierr, herr, read.TMAXECS)) return;
    if (!readRecord(iunit, "upper pressure limit", ierr, herr, read.PMAXECS)) return;
    if (!readRecord(iunit, "maximum density", ierr, herr, read.DMAXECS)) return;
    if (!readTextLine(iunit, "pointer to the ideal-gas block", ierr, herr, heatCapacity)) return;
    if (!readTextLine(iunit, "file of the reference fluid", ierr, herr, hreff)) return;
    if (!readTextLine(iunit, "tag of the reference fluid's equation", ierr, herr, heqn)) return;
    if (!readRecord(iunit, "acentric factor of the reference fluid", ierr, herr, read.ACFREF)) return;
    if (!readRecord(iunit, "critical compressibility of the reference fluid", ierr, herr, read.ZCREF)) return;
    if (!readRecord(iunit, "acentric factor", ierr, herr, read.ACFECS)) return;
    if (!readPositive(iunit, "positive critical temperature", ierr, herr, tc)) return;
    if (!readPositive(iunit, "positive critical pressure", ierr, herr, pc)) return;
    if (!readPositive(iunit, "positive critical density", ierr, herr, dc)) return;
    for (EcsPolynomial* polynomial : {&read.FECS, &read.FDECS, &read.HECS, &read.HDECS})
        if (!readPolynomial(iunit, *polynomial, ierr, herr)) return;
    ecsTerms[icomp] = read;

    FluidConstants& fluid = fluidConstants;
    modelTags.HMODCP[icomp] = heatCapacity;
    fluid.TMEOS[icomp] = read.TMINECS;
    fluid.TXEOS[icomp] = read.TMAXECS;
    fluid.PEOS[icomp] = read.PMAXECS;
    fluid.DEOS[icomp] = read.DMAXECS;
    fluid.ACCEN[icomp] = read.ACFECS;
    fluid.TCRIT[icomp] = tc;
    fluid.PCRIT[icomp] = pc;
    fluid.DCRIT[icomp] = dc;
    fluid.TZ[icomp] = tc;
    fluid.RHOZ[icomp] = dc;
    fluid.REOS[icomp] = defaultGasConstant;
    fluid.ZCRIT[icomp] = pc / (defaultGasConstant * tc * dc);
    if (modelTags.NC == 1 && icomp == 1) fluid.R = defaultGasConstant;
    // the block says nothing of the triple point's pressure and densities
    fluid.PTPN[icomp] = 0.0;
    fluid.DTPN[icomp] = read.DMAXECS;
    fluid.DTPV[icomp] = fluid.DNBPL[icomp] = fluid.DNBPV[icomp] = 0.0;
}

}  // namespace frigana
