// Binary parameters of the mixture model: changing them and reading them back.
#pragma once

#include "EngineLimits.h"

namespace frigana {

using MixNumbers = Array1<double, 6>;
using MixNames = Array1<FixedText<8>, 6>;

// Changes the mixing parameters of a pair; RST puts those of the file back.
//   Given     icomp, jcomp  components of the pair
//             hmodij        tag of the mixing rule; RST or rst resets all pairs
//             fij           the numbers of the rule
//             hfmix         file that holds the rule, read where the tag differs from the present one
//   Returned  hfmix         for RST the file of the set-up
//   Codes     -113 no such pair; -114 the order of the fluids may matter; 111 error in opening the file; those of
//             SETHMX and RDMIX
void SETKTV(int icomp, int jcomp, const Text3& hmodij, const MixNumbers& fij, Text255& hfmix, int& ierr, Text255& herr);

// The mixing parameters of a pair.
//   Returned  hmodij, fij, hfmix  as SETKTV
//             hfij    names of the numbers
//             hbinp   citation of the pair
//             hmxrul  description of the rule
//   Notes     An unknown rule is told through ERRMSG only (-117).
void GETKTV(int icomp, int jcomp, Text3& hmodij, MixNumbers& fij, Text255& hfmix, MixNames& hfij, Text255& hbinp,
            Text255& hmxrul);

// Description of a mixing rule: the values of an ideal mixture, the names of the numbers, the text.
void GETFIJ(const Text3& hmodij, MixNumbers& fij, MixNames& hfij, Text255& hmxrul);

}  // namespace frigana
