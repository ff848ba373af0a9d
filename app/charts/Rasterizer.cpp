#include "Rasterizer.h"

#include <cairo-pdf.h>
#include <cairo.h>
#include <librsvg/rsvg.h>

#include <cmath>
#include <memory>
#include <type_traits>

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

Surface surfaceFor(bool pdf, double width, double height, std::string& bytes) {
    return Surface(pdf ? cairo_pdf_surface_create_for_stream(append, &bytes, width, height)
                       : cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(std::lround(width)),
                                                    static_cast<int>(std::lround(height))));
}

}  // namespace

extern "C" __attribute__((visibility("default"))) bool rasterizeSvg(const std::string& svg, bool pdf, double scale,
                                                                    std::string& bytes, std::string& why) {
    bytes.clear();
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
    const double factor = pdf ? pointsPerPixel : scale;
    const Surface surface = surfaceFor(pdf, width * factor, height * factor, bytes);
    const Context context(cairo_create(surface.get()));
    const RsvgRectangle whole{0.0, 0.0, width * factor, height * factor};
    if (rsvg_handle_render_document(handle.get(), context.get(), &whole, &error) == FALSE)
        return failed("the picture cannot be drawn");
    if (pdf)
        cairo_surface_finish(surface.get());
    else if (cairo_surface_write_to_png_stream(surface.get(), append, &bytes) != CAIRO_STATUS_SUCCESS)
        return failed("the picture cannot be written as PNG");
    return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS || failed("the picture cannot be drawn");
}

static_assert(std::is_same_v<decltype(&rasterizeSvg), frigana::charts::Rasterizer>);
