// Dialog templates, as resources hold them.
#ifndef KV_PLATFORM_USER_TEMPLATE_H
#define KV_PLATFORM_USER_TEMPLATE_H

#include <optional>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace kvp
{

struct TemplateItem {
    DWORD style;
    SHORT x, y, cx, cy; // dialog units
    int id;
    std::u16string className, text;
    WORD number; // of the resource that stands in the text's place, or 0
};
struct DialogTemplate {
    HINSTANCE module; // where it comes from
    DWORD style;
    SHORT x, y, cx, cy;
    std::u16string caption;
    std::vector<TemplateItem> items;
};

// Either form of the resource; nothing when it is missing or damaged.
std::optional<DialogTemplate> LoadTemplate(HINSTANCE module, LPCSTR name);

// Dialog units to pixels, rounded to the nearest.
constexpr int UnitsAcross(int units)
{
    return (units * 6 + 2) >> 2;
}
constexpr int UnitsDown(int units)
{
    return (units * 13 + 4) >> 3;
}
RECT PixelsOf(SHORT x, SHORT y, SHORT cx, SHORT cy);

} // namespace kvp

#endif
