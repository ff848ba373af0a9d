#include "Picture.h"

#include <fstream>
#include <iostream>

#include "Layout.h"
#include "Module.h"
#include "Rasterizer.h"
#include "Svg.h"

namespace frigana::charts {

std::optional<Format> formatOf(const std::string& path) {
    const auto dot = path.find_last_of('.');
    std::string extension = dot == std::string::npos ? "" : path.substr(dot + 1);
    for (char& c : extension)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (extension == "svg" || path == "-") return Format::svg;
    if (extension == "png") return Format::png;
    if (extension == "pdf") return Format::pdf;
    return std::nullopt;
}

namespace {

constexpr char module[] = "frigana_rsvg.so";

}  // namespace

bool canWrite(Format format) {
    return format == Format::svg || modules::isInstalled(module);
}

bool rasterize(const std::string& svg, Format format, double scale, std::string& bytes, std::string& why) {
    bytes.clear();
    if (format == Format::svg) {
        bytes = svg;
        return true;
    }
    if (!canWrite(format)) {
        why = onlySvg;
        return false;
    }
    static std::string complaint;
    static const auto draw = reinterpret_cast<Rasterizer>(modules::load(module, rasterizerName, complaint));
    if (draw != nullptr) return draw(svg, format == Format::pdf, scale, bytes, why);
    why = complaint;
    return false;
}

bool writePicture(const Plot& plot, double width, double height, const std::string& path, std::string& why) {
    const std::optional<Format> format = formatOf(path);
    if (!format) {
        why = path + ": a picture has the extension .svg, .png or .pdf";
        return false;
    }
    std::string bytes, reason;
    if (!rasterize(svgOf(plot, layOut(plot, width, height)), *format, 1.0, bytes, reason)) {
        why = path + ": " + reason;
        return false;
    }
    if (path == "-") {
        std::cout << bytes;
        return true;
    }
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    file.close();
    if (file) return true;
    why = path + ": cannot be written";
    return false;
}

}  // namespace frigana::charts
