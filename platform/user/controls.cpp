// The classes of controls by their names, and the windows that programs make themselves.
#include <algorithm>

#include "platform/kernel/internal.h"
#include "platform/kernel/names.h"
#include "platform/user/button.h"
#include "platform/user/combo.h"
#include "platform/user/dialog.h"
#include "platform/user/edit.h"
#include "platform/user/listbox.h"
#include "platform/user/scrollbar.h"
#include "platform/user/static.h"

namespace kvp
{

template <class T>
static Window *Make(Window &parent, DWORD style, int id, const RECT &rc)
{
    return new T(&parent, style, id, rc); // owned by the parent
}

static Window *MakeButton(Window &parent, DWORD style, int id, const RECT &rc)
{
    switch (style & BUTTON_KIND) {
    case BUTTON_CHECK:
    case BUTTON_AUTO_CHECK: return Make<CheckBox>(parent, style, id, rc);
    case BUTTON_RADIO:
    case BUTTON_AUTO_RADIO: return Make<RadioButton>(parent, style, id, rc);
    case BUTTON_GROUP: return Make<GroupBox>(parent, style, id, rc);
    case BUTTON_OWNER_DRAWN: return Make<OwnerButton>(parent, style, id, rc);
    default: return Make<PushButton>(parent, style, id, rc);
    }
}

static Window *MakeStatic(Window &parent, DWORD style, int id, const RECT &rc)
{
    if ((style & STATIC_KIND) == STATIC_BLACK_FRAME)
        return Make<BlackFrame>(parent, style, id, rc);
    if ((style & STATIC_KIND) == STATIC_BITMAP)
        return Make<StaticPicture>(parent, style, id, rc);
    return Make<StaticText>(parent, style, id, rc);
}

static bool SameName(std::u16string_view a, std::u16string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t x, char16_t y) { return LowerCase(x) == LowerCase(y); });
}

Window *MakeControl(Window &parent, const std::u16string &className, DWORD style, int id,
                    const RECT &rc, const std::u16string &text)
{
    static constexpr struct {
        const char16_t *name;
        Window *(*make)(Window &, DWORD, int, const RECT &);
    } aClasses[] = {
        {u"button", MakeButton},
        {u"static", MakeStatic},
        {u"edit", Make<Edit>},
        {u"combobox", Make<ComboBox>},
        {u"listbox", Make<ListBox>},
        {u"scrollbar", Make<ScrollBar>},
        {u"msctls_trackbar32", Make<Trackbar>},
    };
    for (const auto &row : aClasses)
        if (SameName(row.name, className)) {
            Window *control = row.make(parent, style, id, rc);
            control->text = text;
            return control;
        }
    return nullptr;
}

} // namespace kvp

using namespace kvp;

HWND CreateWindowExA(DWORD, LPCSTR lpClassName, LPCSTR lpWindowName, DWORD dwStyle, int X, int Y,
                     int nWidth, int nHeight, HWND hWndParent, HMENU hMenu, HINSTANCE, LPVOID)
{
    Window *parent = Window::Of(hWndParent);
    if (!parent || !(dwStyle & WS_CHILD) || !lpClassName)
        return nullptr;
    const int id = static_cast<int>(reinterpret_cast<ULONG_PTR>(hMenu) & 0xFFFF);
    Window *control =
        MakeControl(*parent, AnsiToWide(lpClassName), dwStyle, id, {X, Y, X + nWidth, Y + nHeight},
                    AnsiToWide(lpWindowName ? lpWindowName : ""));
    return control ? control->Handle() : nullptr;
}

void InitCommonControls()
{
    // Every class is known from the start.
}
