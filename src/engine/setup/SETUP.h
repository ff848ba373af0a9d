// The door to the engine: set-up of fluids, selection of models, reference state.
#pragma once

#include "EngineLimits.h"

namespace frigana {

using FileNames = ComponentArray<Text255>;

void SETUP(int nc, const FileNames& hfiles, const Text255& hfmix, Text3& hrf, int& ierr, Text255& herr);
void SETMIX(const Text255& hmxnme, const Text255& hfmix, Text3& hrf, int& nc, FileNames& hfiles, Composition& x,
            int& ierr, Text255& herr);
void SETREF(Text3& hrf, int ixmode, const Composition& x0, double h0, double s0, double t0, double p0, int& ierr,
            Text255& herr);
void SETMOD(int nc, const Text3& htype, const Text3& hmix, ComponentArray<Text3>& hcomp, int& ierr, Text255& herr);
void RESETA();
void PUREFLD(int icomp);
void SETNC(int nc);
void SETFLD(int icomp, SlotArray<Text255>& hfile, int& ierr, Text255& herr);

}  // namespace frigana
