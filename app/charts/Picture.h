// Pictures in files: SVG, and PNG and PDF of the same where librsvg was there when the program was built. It is loaded
// when it is needed.
#pragma once

#include <optional>
#include <string>

#include "Plot.h"

namespace frigana::charts {

enum class Format { svg, png, pdf };

// The format that the extension of a path names.
std::optional<Format> formatOf(const std::string& path);
// Whether this program can write a format, and what is said where it cannot.
bool canWrite(Format format);
inline constexpr char onlySvg[] = "this program was built without librsvg and draws SVG only";

// Draws a plot in a size [px] into a file.
//   Returned  (value)  false with the reason in `why`
bool writePicture(const Plot& plot, double width, double height, const std::string& path, std::string& why);

// The bytes of a picture made of an SVG.
//   Given     scale   pixels of a PNG per pixel of the SVG
//   Returned  (value) false with the reason in `why`
bool rasterize(const std::string& svg, Format format, double scale, std::string& bytes, std::string& why);

}  // namespace frigana::charts
