#include "Picture.h"

#include <fstream>
#include <iostream>

#include "Layout.h"
#include "Svg.h"

#ifdef FRIGANA_WITH_RSVG
#include <cairo-pdf.h>
#include <cairo.h>
#include <librsvg/rsvg.h>

#include <cmath>
#include <memory>
#endif

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

#ifdef FRIGANA_WITH_RSVG

bool canWrite(Format) {
    return true;
}

namespace {

cairo_status_t append(void* bytes, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

template <auto release>
struct Release {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};
using Surface = std::unique_ptr<cairo_surface_t, Release<cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Release<cairo_destroy>>;
using Handle = std::unique_ptr<RsvgHandle, Release<g_object_unref>>;

}  // namespace

bool rasterize(const std::string& svg, Format format, double scale, std::string& bytes, std::string& why) {
    bytes.clear();
    if (format == Format::svg) {
        bytes = svg;
        return true;
    }
    GError* error = nullptr;
    const Handle handle(rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(svg.data()), svg.size(), &error));
    const auto failed = [&](const char* what) {
        why = error != nullptr ? error->message : what;
        if (error != nullptr) g_error_free(error);
        return false;
    };
    if (!handle) return failed("the picture cannot be read");
    double width = 0.0, height = 0.0;
    if (rsvg_handle_get_intrinsic_size_in_pixels(handle.get(), &width, &height) == FALSE)
        return failed("the picture has no size");
    constexpr double pointsPerPixel = 0.75;  // 72 against 96 in an inch
    const double factor = format == Format::png ? scale : pointsPerPixel;
    const Surface surface(format == Format::png
                              ? cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                                           static_cast<int>(std::lround(width * scale)),
                                                           static_cast<int>(std::lround(height * scale)))
                              : cairo_pdf_surface_create_for_stream(append, &bytes, width * factor, height * factor));
    const Context context(cairo_create(surface.get()));
    const RsvgRectangle whole{0.0, 0.0, width * factor, height * factor};
    if (rsvg_handle_render_document(handle.get(), context.get(), &whole, &error) == FALSE)
        return failed("the picture cannot be drawn");
    if (format == Format::png) {
        if (cairo_surface_write_to_png_stream(surface.get(), append, &bytes) != CAIRO_STATUS_SUCCESS)
            return failed("the picture cannot be written as PNG");
    } else {
        cairo_surface_finish(surface.get());
    }
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return failed("the picture cannot be drawn");
    return true;
}

#else

bool canWrite(Format format) {
    return format == Format::svg;
}

bool rasterize(const std::string& svg, Format format, double, std::string& bytes, std::string& why) {
    if (format == Format::svg) {
        bytes = svg;
        return true;
    }
    why = "this program was built without librsvg and draws SVG only";
    return false;
}

#endif

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
