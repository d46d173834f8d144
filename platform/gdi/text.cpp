// Text: laid out by Pango in one pinned font, kept as coverage masks, because the same few hundred
// labels are drawn again and again and laying one out costs more than filling a page.
#include <algorithm>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <fontconfig/fontconfig.h>
#include <glib-object.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>

// The library's own names for these are macros.
#undef TRUE
#undef FALSE

#include "platform/gdi/gdi.h"
#include "platform/host.h"

namespace kvp
{

static constexpr int FONT_PIXELS = 11;
static constexpr size_t MOST_KEPT = 500;

// Nothing but these fonts, and nothing of what the person has set for other programs, so that
// pictures are the same on every machine. The cache is the one that the fonts' packages fill.
static constexpr char FONT_CONFIGURATION[] = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <dir>/usr/share/fonts/truetype/dejavu</dir>
  <dir>/usr/share/fonts/opentype/noto</dir>
  <cachedir>/var/cache/fontconfig</cachedir>
  <selectfont>
    <acceptfont>
      <glob>*/DejaVuSansCondensed*</glob>
      <glob>*/NotoSansCJK-*</glob>
      <pattern><patelt name="family"><string>DejaVu Sans</string></patelt></pattern>
      <pattern><patelt name="family"><string>Noto Sans CJK JP</string></patelt></pattern>
    </acceptfont>
    <rejectfont>
      <glob>*</glob>
      <pattern><patelt name="scalable"><bool>true</bool></patelt></pattern>
    </rejectfont>
  </selectfont>
  <match target="font">
    <edit name="antialias" mode="assign"><bool>true</bool></edit>
    <edit name="hinting" mode="assign"><bool>true</bool></edit>
    <edit name="autohint" mode="assign"><bool>false</bool></edit>
    <edit name="hintstyle" mode="assign"><const>hintfull</const></edit>
    <edit name="rgba" mode="assign"><const>none</const></edit>
  </match>
</fontconfig>
)";

namespace
{
struct Block {
    int width = 0, height = 0;
    std::vector<uint8_t> coverage; // width * height
};

struct Plain {
    std::string utf8;
    int underlined = -1; // byte in utf8
};
} // namespace

// Let go at the program's end, with the fonts and their configuration.
struct Unref {
    void operator()(void *object) const { g_object_unref(object); }
};
struct FreeFont {
    void operator()(PangoFontDescription *font) const { pango_font_description_free(font); }
};

static PangoContext *Context()
{
    static const std::unique_ptr<PangoContext, Unref> context([] {
        FcConfig *config = FcConfigCreate();
        FcConfigParseAndLoadFromMemory(config,
                                       reinterpret_cast<const FcChar8 *>(FONT_CONFIGURATION), 1);
        FcConfigBuildFonts(config);
        // Otherwise a thread of the library reads the machine's own configuration as well.
        FcConfigSetCurrent(config);
        PangoFontMap *map = pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT);
        pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(map), config);
        FcConfigDestroy(config);
        PangoContext *made = pango_font_map_create_context(map);
        g_object_unref(map);
        cairo_font_options_t *options = cairo_font_options_create();
        cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
        cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_FULL);
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
        pango_cairo_context_set_font_options(made, options);
        cairo_font_options_destroy(options);
        return made;
    }());
    return context.get();
}

// The one layout, set up afresh by each use.
static PangoLayout *Layout(const std::string &utf8, unsigned flags, int wrapAt)
{
    static const std::unique_ptr<PangoLayout, Unref> kept(pango_layout_new(Context()));
    static const std::unique_ptr<PangoFontDescription, FreeFont> ours([] {
        PangoFontDescription *d =
            pango_font_description_from_string("DejaVu Sans,Noto Sans CJK JP");
        pango_font_description_set_stretch(d, PANGO_STRETCH_SEMI_CONDENSED);
        pango_font_description_set_absolute_size(d, FONT_PIXELS * PANGO_SCALE);
        return d;
    }());
    PangoLayout *layout = kept.get();
    PangoFontDescription *font = ours.get();
    pango_font_description_set_weight(font,
                                      flags & TEXT_BOLD ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout, font);
    pango_layout_set_text(layout, utf8.c_str(), static_cast<int>(utf8.size()));
    pango_layout_set_width(layout, wrapAt > 0 ? wrapAt * PANGO_SCALE : -1);
    pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
    pango_layout_set_alignment(layout, flags & TEXT_CENTER  ? PANGO_ALIGN_CENTER
                                       : flags & TEXT_RIGHT ? PANGO_ALIGN_RIGHT
                                                            : PANGO_ALIGN_LEFT);
    return layout;
}

static Plain WithoutPrefix(std::u16string_view text, unsigned flags)
{
    Plain plain;
    if (!(flags & TEXT_PREFIX)) {
        plain.utf8 = ToUtf8(text);
        return plain;
    }
    std::u16string shown;
    size_t underlined = std::u16string::npos;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && i + 1 < text.size()) {
            ++i;
            if (text[i] != u'&')
                underlined = shown.size();
        }
        shown += text[i];
    }
    plain.utf8 = ToUtf8(shown);
    if (underlined < shown.size())
        plain.underlined = static_cast<int>(ToUtf8(shown.substr(0, underlined)).size());
    return plain;
}

static void Underline(cairo_t *cr, PangoLayout *layout, int byte)
{
    PangoRectangle at;
    pango_layout_index_to_pos(layout, byte, &at);
    int line = 0;
    pango_layout_index_to_line_x(layout, byte, 0, &line, nullptr);
    cairo_rectangle(cr, PANGO_PIXELS(at.x), line * LINE_HEIGHT + BASE_LINE + 1,
                    std::max(PANGO_PIXELS(at.width) - 1, 2), 1);
    cairo_fill(cr);
}

static void DrawLines(cairo_t *cr, PangoLayout *layout)
{
    const int lines = pango_layout_get_line_count(layout);
    PangoLayoutIter *iter = pango_layout_get_iter(layout);
    for (int i = 0; i < lines; ++i, pango_layout_iter_next_line(iter)) {
        PangoRectangle extents;
        pango_layout_iter_get_line_extents(iter, nullptr, &extents);
        cairo_move_to(cr, PANGO_PIXELS(extents.x), i * LINE_HEIGHT + BASE_LINE);
        pango_cairo_show_layout_line(cr, pango_layout_iter_get_line_readonly(iter));
    }
    pango_layout_iter_free(iter);
}

static Block Render(std::u16string_view text, unsigned flags, int wrapAt)
{
    const Plain plain = WithoutPrefix(text, flags);
    PangoLayout *layout = Layout(plain.utf8, flags, wrapAt);
    PangoRectangle ink, logical;
    pango_layout_get_pixel_extents(layout, &ink, &logical);
    Block block;
    block.width = wrapAt > 0 ? wrapAt : std::max(logical.width, ink.x + ink.width);
    block.height = pango_layout_get_line_count(layout) * LINE_HEIGHT;
    if (block.width <= 0 || block.width > 1 << 14 || block.height > 1 << 14)
        return {};
    cairo_surface_t *mask = cairo_image_surface_create(CAIRO_FORMAT_A8, block.width, block.height);
    cairo_t *cr = cairo_create(mask);
    DrawLines(cr, layout);
    if (plain.underlined >= 0)
        Underline(cr, layout, plain.underlined);
    cairo_destroy(cr);
    cairo_surface_flush(mask);
    const uint8_t *row = cairo_image_surface_get_data(mask);
    for (int y = 0; row && y < block.height; ++y, row += cairo_image_surface_get_stride(mask))
        block.coverage.insert(block.coverage.end(), row, row + block.width);
    cairo_surface_destroy(mask);
    return block;
}

static const Block &BlockOf(std::u16string_view text, unsigned flags, int wrapAt)
{
    static std::unordered_map<std::u16string, Block> kept;
    flags &= TEXT_PREFIX | TEXT_BOLD | (wrapAt > 0 ? TEXT_CENTER | TEXT_RIGHT : 0);
    std::u16string key(text);
    key += static_cast<char16_t>(flags);
    key += static_cast<char16_t>(wrapAt);
    const auto found = kept.find(key);
    if (found != kept.end())
        return found->second;
    if (kept.size() >= MOST_KEPT)
        kept.clear();
    return kept[key] = Render(text, flags, wrapAt);
}

static void BlendPixel(uint32_t &pixel, uint32_t color, uint32_t alpha)
{
    if (alpha == 255) {
        pixel = color;
        return;
    }
    // Two channels at once; a division by 255 that is exact, so that a colour on itself stays.
    const uint32_t rest = 255 - alpha;
    uint32_t rb = (pixel & 0xFF00FF) * rest + (color & 0xFF00FF) * alpha + 0x800080;
    uint32_t g = (pixel >> 8 & 0xFF) * rest + (color >> 8 & 0xFF) * alpha + 0x80;
    rb = (rb + (rb >> 8 & 0xFF00FF)) >> 8 & 0xFF00FF;
    g = (g + (g >> 8)) >> 8 & 0xFF;
    pixel = rb | g << 8;
}

static void Blend(const Dc &dc, const RECT &clip, const Block &block, int left, int top,
                  COLORREF color)
{
    Surface &to = *dc.target;
    const RECT part = Intersect(Intersect(clip, {0, 0, to.width, to.height}),
                                {left, top, left + block.width, top + block.height});
    for (int y = part.top; y < part.bottom; ++y) {
        const uint8_t *alpha =
            block.coverage.data() + static_cast<size_t>(y - top) * static_cast<size_t>(block.width);
        uint32_t *row = to.Row(y);
        for (int x = part.left; x < part.right; ++x)
            if (alpha[x - left])
                BlendPixel(row[x], PixelOf(color), alpha[x - left]);
    }
}

void DrawTextIn(HDC hdc, const RECT &rc, std::u16string_view text, unsigned flags, COLORREF color)
{
    const Dc *dc = DcOf(hdc);
    if (!dc || !dc->target || IsEmpty(rc) || text.empty())
        return;
    const Block &block = BlockOf(text, flags, flags & TEXT_WRAP ? Width(rc) : 0);
    int x = rc.left, y = rc.top;
    if (flags & TEXT_CENTER)
        x += (Width(rc) - block.width) / 2;
    else if (flags & TEXT_RIGHT)
        x = rc.right - block.width;
    if (flags & TEXT_MIDDLE)
        y += (Height(rc) - block.height) / 2;
    const RECT clip = Intersect(dc->clip, Moved(rc, dc->origin.x, dc->origin.y));
    Blend(*dc, clip, block, x + dc->origin.x, y + dc->origin.y, color);
}

POINT TextSize(std::u16string_view text, unsigned flags, int wrapAt)
{
    const Block &block = BlockOf(text, flags, wrapAt);
    return {block.width, block.height};
}

int TextOffset(std::u16string_view text, size_t index)
{
    const int byte = static_cast<int>(ToUtf8(text.substr(0, index)).size());
    PangoRectangle at;
    pango_layout_index_to_pos(Layout(ToUtf8(text), 0, 0), byte, &at);
    return PANGO_PIXELS(at.x);
}

size_t TextIndexAt(std::u16string_view text, int x)
{
    const std::string utf8 = ToUtf8(text);
    int byte = 0, behind = 0;
    pango_layout_xy_to_index(Layout(utf8, 0, 0), x * PANGO_SCALE, 0, &byte, &behind);
    const std::string_view before(utf8.data(), static_cast<size_t>(byte));
    return std::min(text.size(), ToWide(before).size() + static_cast<size_t>(behind));
}

} // namespace kvp
