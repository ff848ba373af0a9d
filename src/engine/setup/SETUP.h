// The door to the engine: set-up of fluids, selection of models, reference state.
//
// Order of the calls: SETPATH (once, optional), SETMOD (to force models, optional), SETUP or SETMIX, SETREF
// (optional). Property routines only after a set-up that returned ierr <= 0.
#pragma once

#include "EngineLimits.h"

namespace frigana {

using FileNames = ComponentArray<Text255>;

// The version of the engine, which SETUP answers to nc = -1.
inline constexpr int engineVersion = 91000;

// What the last set-up was asked for and which models it settled on; written by SETUP alone (HSVRF and HREFDF, which
// belong to it, stand in ReferenceState).
struct SetupMemory {
    Text255 HSVMIX{"NUL"};
    Text255 HSVPATH{"NUL"};  // installation folder
    Text3 HSVPHK{"NUL"}, HSVEOS{"NUL"}, HSVVIS{"NUL"}, HSVCND{"NUL"}, HSVSRF{"NUL"}, HSVDIE{"NUL"};
    ComponentArray<Text3> HSVEQK{}, HSVVIK{}, HSVCNK{}, HSVSRK{}, HSVDIK{};
    SlotArray<Text255> HSVFLD{};

    SetupMemory();
};
extern SetupMemory setupMemory;

// Sets the engine up for one to twenty fluids.
//   Given     nc      number of components; -1 asks for the version
//             hfiles  names of the fluid files
//             hfmix   name of the file of mixing parameters
//             hrf     tag of the reference state (IIR, ASH, NBP, DEF, ...)
//   Returned  hrf     DEF where a tag OTH or OT0 was given
//             ierr    0, a warning, an error, or the version
//   Codes     91000 version; 113 number of components out of bounds; 114 number differs from that of SETMOD;
//             -105 unknown mixture model, or reference state that needs SETREF; 101 to 106 and -103 of SETFLD; those of
//             SETHMX and SETREF
//   Notes     Nothing is read where installation folder, files, models and reference state are those of the last good
//             set-up, and none of the files has changed since. Of several warnings, that of the mixture model is
//             reported, else the first; an error of the mixture model is not hidden by a warning of SETREF.
void SETUP(int nc, const FileNames& hfiles, const Text255& hfmix, Text3& hrf, int& ierr, Text255& herr);

// SETUP with the names in one string, separated by the character |.
//   Codes     1 fewer names than components; those of SETUP
void SETUP0(int nc, const FixedText<10000>& hfld, const Text255& hfm, Text3& hrf, int& ierr, Text255& herr);

// Reads a mixture file (names and mole fractions of the components) and sets the engine up for it.
//   Given     hmxnme  name of the mixture file
//             hfmix   name of the file of mixing parameters; the fluid files are looked for in its folder
//             hrf     as SETUP
//   Returned  nc, hfiles, x  components, names of their files, mole fractions
//   Codes     101 error in opening or reading the file; -102 parameters in the file ignored; -103 composition
//             normalized; those of SETUP
void SETMIX(const Text255& hmxnme, const Text255& hfmix, Text3& hrf, int& nc, FileNames& hfiles, Composition& x,
            int& ierr, Text255& herr);

// Sets the number of components, and nothing else.
void SETNC(int nc);

// Makes the routines take component icomp as if it were pure; any other number than 0 to 20 takes that back.
void PUREFLD(int icomp);

// Forgets what is memorised of saturation: the last states, the hot end, the spinodal tables and the extrema of the
// lines.
void forgetSaturation();

// Forgets every memorised state of saturation, flash and model caches.
void RESETA();

// Chooses the records of the mixture file as published for the natural-gas model.
//   Given     iflag  1: equations of state FEK and the GE records of the pairs; otherwise the defaults
void GERG04(int nc, int iflag, int& ierr, Text255& herr);

// Forces models before a set-up.
//   Given     nc     number of components
//             htype  property: NBS all defaults, EOS, ETA or VIS, TCX, STN (or lower case); another does nothing
//             hmix   model of the mixture
//             hcomp  models of the components
//   Returned  hcomp  NBS throughout where htype is NBS
//   Codes     113 number of components out of bounds
void SETMOD(int nc, const Text3& htype, const Text3& hmix, ComponentArray<Text3>& hcomp, int& ierr, Text255& herr);

// Model of a property in use, with its citation.
//   Given     icomp  component slot
//             htype  EOS, CP0, ETA or VIS, VSK, TCX, TKK, STN, DE, MLT, SBL, PS, DL, DV
//   Returned  hcode  tag of the model, the first three characters of hcite
//             hcite  citation; keeps its value for any other htype
void GETMOD(int icomp, const Text3& htype, Text3& hcode, Text255& hcite);

// Fixes the zero of enthalpy and entropy.
//   Given     hrf     tag: IIR (h = 200 kJ/kg, s = 1 kJ/(kg K), saturated liquid at 273.15 K), ASH (0, saturated liquid
//                     at 233.15 K), NBP (0, saturated liquid at 101.325 kPa), OTH (h0, s0 at t0, p0, or at saturation
//                     for p0 < 0), OT0 (the same in the ideal gas), DEF (the default of the fluid file), NA (none);
//                     ??? asks for the default of component 1
//             ixmode  1 the point of each pure component, 2 that of the mixture x0
//             x0      mole fractions for ixmode 2
//             h0, s0, t0, p0  J/mol, J/(mol K), K, kPa
//   Returned  hrf     answer to ???
//   Codes     22 to 26 warnings: the point is outside a component's range, its default is used; 27 the point of the
//             mixture is outside the limits; -28 components with different defaults; -29 unknown tag; 119 no
//             convergence at the reference point
void SETREF(Text3& hrf, int ixmode, const Composition& x0, double h0, double s0, double t0, double p0, int& ierr,
            Text255& herr);

// Reads the fluid file of a slot.
//   Given     icomp  component slot
//             hfile  names per slot
//   Returned  hfile  with the extension if it was missing, and the names of reference fluids
//   Codes     101 not opened; 102 premature end; 104 error in a section; 105 equation of state not found;
//             106 ideal-gas heat capacity not found; -103 unknown model
//   Notes     A reader's own warning is passed on as it is. A later error replaces an earlier one, a warning does not.
void SETFLD(int icomp, SlotArray<Text255>& hfile, int& ierr, Text255& herr);

// The sections of transport, surface tension and dielectric constant.
//   Given     unit, icomp, hcasn, hcite, hflag, hstar, htype  open file, slot, CAS number, citation, key, marker and
//                                                             model tag of the section
//   Returned  heqn, hreff       model tag and file of a reference fluid; hreff is blank where the section names none
//             hetemp, httemp    tags for a fluid without a default section of viscosity and of conductivity
//             hfile             names per slot
//             letaread, ltcxread  a default section was met
void STFLD2(int unit, int icomp, const Text12& hcasn, const FixedText<251>& hcite, Text3& heqn, Text3& hetemp,
            SlotArray<Text255>& hfile, const Text3& hflag, Text255& hreff, char hstar, Text3& httemp,
            const Text3& htype, bool& letaread, bool& ltcxread, int& ierr, Text255& herr);

// Puts the ammonia-water mixture on the gas constant and reference values of its published model, where the reference
// state of the fluid files is that model's.
//   Source    Tillner-Roth, Friend, J. Phys. Chem. Ref. Data 27 (1998) 63
void AMH2OR();

}  // namespace frigana
