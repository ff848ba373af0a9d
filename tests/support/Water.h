// Water as a fluid file: the only fluid whose saturated liquid has a maximum of density and whose melting line runs
// backwards, which the saturation by density treats apart.
#pragma once

#include <string>

#include "OPENFL.h"
#include "SETUP.h"
#include "TemporaryFolder.h"

namespace frigana::test {

// W. Wagner, A. Pruss, J. Phys. Chem. Ref. Data 31 (2002) 387: equation of state (table 6.2), density in units of
// 322 kg/m3 / 18.015268 g/mol. The heat capacity of the ideal gas is only its value at room temperature: the saturation
// line does not depend on it. The melting line is that of the tag MLW, without terms in the file.
inline const std::string waterFile = R"(water
7732-18-5
water
H2O
R-718
  18.015268
  273.16
  373.124
  647.096
  22064.0
  17.8737279956
  0.3443
  1.855
OTH
  300.0  0.01  45000.0  200.0
  10.0

#EOS
FEQ  Helmholtz equation of state of Wagner and Pruss
?W. Wagner, A. Pruss, J. Phys. Chem. Ref. Data 31 (2002) 387
!
  251.165
  2000.0
  1000000.0
  73.96
CPP
  18.015268
  273.16
  0.611655
  55.496955
  373.124
  0.3443
  647.096  22064.0  17.8737279956
  647.096  17.8737279956
  8.314371357587
  51  4  5  12  0  0
  0.12533547935523e-1  -0.5    1.0   0.0
  0.78957634722828e1    0.875  1.0   0.0
 -0.87803203303561e1    1.0    1.0   0.0
  0.31802509345418      0.5    2.0   0.0
 -0.26145533859358      0.75   2.0   0.0
 -0.78199751687981e-2   0.375  3.0   0.0
  0.88089493102134e-2   1.0    4.0   0.0
 -0.66856572307965      4.0    1.0   1.0
  0.20433810950965      6.0    1.0   1.0
 -0.66212605039687e-4  12.0    1.0   1.0
 -0.19232721156002      1.0    2.0   1.0
 -0.25709043003438      5.0    2.0   1.0
  0.16074868486251      4.0    3.0   1.0
 -0.40092828925807e-1   2.0    4.0   1.0
  0.39343422603254e-6  13.0    4.0   1.0
 -0.75941377088144e-5   9.0    5.0   1.0
  0.56250979351888e-3   3.0    7.0   1.0
 -0.15608652257135e-4   4.0    9.0   1.0
  0.11537996422951e-8  11.0   10.0   1.0
  0.36582165144204e-6   4.0   11.0   1.0
 -0.13251180074668e-11 13.0   13.0   1.0
 -0.62639586912454e-9   1.0   15.0   1.0
 -0.10793600908932      7.0    1.0   2.0
  0.17611491008752e-1   1.0    2.0   2.0
  0.22132295167546      9.0    2.0   2.0
 -0.40247669763528     10.0    2.0   2.0
  0.58083399985759     10.0    3.0   2.0
  0.49969146990806e-2   3.0    4.0   2.0
 -0.31358700712549e-1   7.0    4.0   2.0
 -0.74315929710341     10.0    4.0   2.0
  0.47807329915480     10.0    5.0   2.0
  0.20527940895948e-1   6.0    6.0   2.0
 -0.13636435110343     10.0    6.0   2.0
  0.14180634400617e-1  10.0    7.0   2.0
  0.83326504880713e-2   1.0    9.0   2.0
 -0.29052336009585e-1   2.0    9.0   2.0
  0.38615085574206e-1   3.0    9.0   2.0
 -0.20393486513704e-1   4.0    9.0   2.0
 -0.16554050063734e-2   8.0    9.0   2.0
  0.19955571979541e-2   6.0   10.0   2.0
  0.15870308324157e-3   9.0   10.0   2.0
 -0.16388568342530e-4   8.0   12.0   2.0
  0.43613615723811e-1  16.0    3.0   3.0
  0.34994005463765e-1  22.0    4.0   3.0
 -0.76788197844621e-1  23.0    4.0   3.0
  0.22446277332006e-1  23.0    5.0   3.0
 -0.62689710414685e-4  10.0   14.0   4.0
 -0.55711118565645e-9  50.0    3.0   6.0
 -0.19905718354408     44.0    6.0   6.0
  0.31777497330738     46.0    6.0   6.0
 -0.11841182425981     50.0    6.0   6.0
 -0.31306260323435e2    0.0    3.0   2.0  2.0  -20.0  -150.0  1.21   1.0    0.0  0.0  0.0
  0.31546140237781e2    1.0    3.0   2.0  2.0  -20.0  -150.0  1.21   1.0    0.0  0.0  0.0
 -0.25213154341695e4    4.0    3.0   2.0  2.0  -20.0  -250.0  1.25   1.0    0.0  0.0  0.0
 -0.14874640856724      0.0    1.0   2.0  2.0    0.85   0.3   0.32  28.0  700.0  0.2  3.5
  0.31806110878444      0.0    1.0   2.0  2.0    0.95   0.3   0.32  32.0  800.0  0.2  3.5

#AUX
CPP  ideal-gas heat capacity at room temperature
?W. Wagner, A. Pruss, J. Phys. Chem. Ref. Data 31 (2002) 387
!
  251.165
  2000.0
  0.0
  0.0
  1.0  8.314371357587
  1  0  0  0  0  0  0
  4.04  0.0

#MLT
MLW  melting lines of water
?Revised Release on the Pressure along the Melting and Sublimation Curves of Ordinary Water Substance, IAPWS 2011
!
  251.165
  1000.0
  0.0
  0.0
  1.0  1.0
  0  0  0  0  0  0

@END
c
0
)";

// Sets the engine up for water; the code of SETUP.
inline int setUpWater() {
    const TemporaryFolder folder;
    writeFile(folder.path("WATER.FLD"), waterFile);
    SETPATH(folder.path());
    FileNames files{};
    files[1] = "WATER.FLD";
    Text3 reference = "DEF";
    int ierr;
    Text255 herr;
    SETUP(1, files, "HMX.BNC", reference, ierr, herr);
    return ierr;
}

}  // namespace frigana::test
