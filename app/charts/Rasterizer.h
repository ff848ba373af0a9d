// What the module offers that makes PNG and PDF of an SVG.
#pragma once

#include <string>

namespace frigana::charts {

// The bytes of a picture.
//   Given     pdf     PDF in place of PNG
//             scale   pixels of a PNG per pixel of the SVG
//   Returned  (value) false with the reason in `why`
using Rasterizer = bool (*)(const std::string& svg, bool pdf, double scale, std::string& bytes, std::string& why);

inline constexpr char rasterizerName[] = "rasterizeSvg";

}  // namespace frigana::charts
