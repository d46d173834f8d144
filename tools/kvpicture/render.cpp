// Rendering by librsvg on cairo, and the changes that one drawing serves several pictures by.
#include "tools/kvpicture/picture.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include <cairo.h>
#include <librsvg/rsvg.h>

namespace kvpic
{

namespace
{
template <auto release>
struct Releaser {
    template <class T>
    void operator()(T *object) const
    {
        release(object);
    }
};
using Handle = std::unique_ptr<RsvgHandle, Releaser<g_object_unref>>;
using Surface = std::unique_ptr<cairo_surface_t, Releaser<cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Releaser<cairo_destroy>>;
} // namespace

static std::runtime_error Problem(const std::string &file, GError *error)
{
    std::string text = error ? error->message : "cannot be drawn";
    g_clear_error(&error);
    while (text.ends_with('\n')) // some of the library's messages are lines
        text.pop_back();
    return std::runtime_error(file + ": " + text);
}

// Of one channel, stored multiplied by alpha.
static uint32_t Undone(uint32_t channel, uint32_t alpha)
{
    return alpha ? std::min<uint32_t>((channel * 255 + alpha / 2) / alpha, 255) : 0;
}

static Image TakeOut(cairo_surface_t *surface, int width, int height)
{
    Image image{width, height, {}};
    cairo_surface_flush(surface);
    const unsigned char *row = cairo_image_surface_get_data(surface);
    for (int y = 0; y < height; ++y, row += cairo_image_surface_get_stride(surface))
        for (int x = 0; x < width; ++x) {
            const uint32_t p = reinterpret_cast<const uint32_t *>(row)[x], alpha = p >> 24;
            image.pixels.push_back(alpha << 24 | Undone(p >> 16 & 0xFF, alpha) << 16 |
                                   Undone(p >> 8 & 0xFF, alpha) << 8 | Undone(p & 0xFF, alpha));
        }
    return image;
}

// The whole drawing, or its layers in their order.
static bool Draw(RsvgHandle *handle, cairo_t *cr, const RsvgRectangle &room,
                 std::span<const std::string> layers, GError **error)
{
    if (layers.empty())
        return rsvg_handle_render_document(handle, cr, &room, error);
    return std::all_of(layers.begin(), layers.end(), [&](const std::string &layer) {
        return rsvg_handle_render_layer(handle, cr, ("#" + layer).c_str(), &room, error);
    });
}

Image Render(const std::string &file, int width, int height, std::span<const std::string> layers)
{
    GError *error = nullptr;
    const Handle handle(rsvg_handle_new_from_file(file.c_str(), &error));
    if (!handle)
        throw Problem(file, error);
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    const Context cr(cairo_create(surface.get()));
    const RsvgRectangle whole{0, 0, static_cast<double>(width), static_cast<double>(height)};
    if (!Draw(handle.get(), cr.get(), whole, layers, &error) ||
        cairo_status(cr.get()) != CAIRO_STATUS_SUCCESS)
        throw Problem(file, error);
    return TakeOut(surface.get(), width, height);
}

void Mirror(Image &image)
{
    for (int y = 0; y < image.height; ++y) {
        const auto row = image.pixels.begin() + y * image.width;
        std::reverse(row, row + image.width);
    }
}

static uint32_t Mixed(uint32_t top, uint32_t bottom, uint32_t alpha)
{
    return (top * alpha + bottom * (255 - alpha) + 127) / 255;
}

void MakeGray(Image &image)
{
    for (uint32_t &p : image.pixels) {
        // As bright as the eye finds each colour.
        const uint32_t bright =
            ((p >> 16 & 0xFF) * 299 + (p >> 8 & 0xFF) * 587 + (p & 0xFF) * 114 + 500) / 1000;
        p = (p & 0xFF000000) | bright << 16 | bright << 8 | bright;
    }
}

void LayOn(Image &image, uint32_t color)
{
    for (uint32_t &p : image.pixels) {
        const uint32_t alpha = p >> 24;
        uint32_t mixed = 0xFF000000;
        for (const int shift : {16, 8, 0})
            mixed |= Mixed(p >> shift & 0xFF, color >> shift & 0xFF, alpha) << shift;
        p = mixed;
    }
}

} // namespace kvpic
