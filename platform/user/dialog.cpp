// Dialogs: making them from templates, what their procedures' results mean, and ending them.
#include "platform/user/dialog.h"

#include <algorithm>

#include "platform/served.h"
#include "platform/user/button.h"
#include "platform/user/static.h"
#include "platform/user/transcript.h"

namespace kvp
{

// The window whose client area is as large as this.
static RECT Around(const RECT &where, bool framed)
{
    return framed ? RECT{where.left, where.top, where.right + 2 * FRAME_SIDE,
                         where.bottom + FRAME_TOP + FRAME_SIDE}
                  : where;
}

static bool HasFrame(const Window *parent, const DialogTemplate &shape)
{
    return !parent && (shape.style & STYLE_CAPTION) == STYLE_CAPTION;
}

// A dialog is shown when its procedure has set it up, whatever the template says.
Dialog::Dialog(Window *dialogParent, const DialogTemplate &shape, int templateId, const RECT &where,
               DLGPROC dialogProcedure)
    : Window(dialogParent, shape.style & ~(WS_VISIBLE | STYLE_DISABLED), templateId,
             Around(where, HasFrame(dialogParent, shape))),
      procedure(dialogProcedure)
{
    framed = HasFrame(parent, shape);
    text = shape.caption;
}

Dialog::~Dialog()
{
    Dialog::Message(WM_DESTROY, 0, 0);
    while (!children.empty())
        delete children.back();
}

// Messages whose result is the procedure's own, and not the answer whether it was handled.
static bool AnswersItself(UINT msg)
{
    return msg == WM_INITDIALOG || (msg >= WM_CTLCOLORMSGBOX && msg <= WM_CTLCOLORSTATIC);
}

LRESULT Dialog::Message(UINT msg, WPARAM wParam, LPARAM lParam)
{
    messageResult = 0;
    const INT_PTR answer = procedure ? procedure(Handle(), msg, wParam, lParam) : FALSE;
    if (AnswersItself(msg))
        return answer;
    return answer ? messageResult : Window::Message(msg, wParam, lParam);
}

// White, or with the 3-D look grey but for what is typed in or chosen from.
COLORREF Dialog::DefaultColor(UINT ctlColor) const
{
    const bool field = ctlColor == WM_CTLCOLOREDIT || ctlColor == WM_CTLCOLORLISTBOX;
    return (style & STYLE_3D_LOOK) && !field ? FACE : LIGHT;
}

void Dialog::Erase(HDC hdc)
{
    SetTextColor(hdc, DARK);
    const COLORREF standard = DefaultColor(WM_CTLCOLORDLG);
    SetBkColor(hdc, standard);
    const LRESULT answer =
        Message(WM_CTLCOLORDLG, reinterpret_cast<WPARAM>(hdc), reinterpret_cast<LPARAM>(Handle()));
    const Object *brush = ObjectOf(reinterpret_cast<HGDIOBJ>(answer));
    Fill(hdc, Client(), brush && brush->kind == ObjectKind::Brush ? brush->color : standard);
    const Dc *dc = DcOf(hdc);
    for (Window *child : children)
        if (!IsEmpty(Intersect(dc->clip, Moved(child->rc, dc->origin.x, dc->origin.y))))
            child->picture = 0;
}

void Dialog::Start(const DialogTemplate &shape, LPARAM parameter)
{
    for (const TemplateItem &item : shape.items) {
        Window *control = MakeControl(*this, item.className, item.style, item.id,
                                      PixelsOf(item.x, item.y, item.cx, item.cy), item.text);
        if (auto *shown = dynamic_cast<StaticPicture *>(control))
            shown->Load(shape.module, item.number);
    }
    Window *first = FirstTabStop(*this);
    Message(WM_INITDIALOG, reinterpret_cast<WPARAM>(first ? first->Handle() : nullptr), parameter);
}

Window *Dialog::DefaultButton() const
{
    for (Window *child : children)
        if (child->IsPushButton() && (child->style & BUTTON_KIND) == BUTTON_DEFAULT)
            return child;
    return Child(IDOK);
}

void Dialog::PressDefault()
{
    Window *button = DefaultButton();
    if (button && !button->enabled)
        return;
    Message(WM_COMMAND, static_cast<WPARAM>(button ? button->id : IDOK),
            reinterpret_cast<LPARAM>(button ? button->Handle() : nullptr));
}

void Dialog::PressCancel()
{
    Window *button = Child(IDCANCEL);
    if (button && !button->enabled)
        return;
    Message(WM_COMMAND, IDCANCEL, reinterpret_cast<LPARAM>(button ? button->Handle() : nullptr));
}

Dialog *DialogOf(Window *window)
{
    for (Window *w = window; w; w = w->parent)
        if (auto *dialog = dynamic_cast<Dialog *>(w))
            return dialog;
    return nullptr;
}

Dialog *ShownDialog(Window &top)
{
    if (auto *dialog = dynamic_cast<Dialog *>(&top))
        return dialog;
    for (Window *child : top.children)
        if (auto *page = dynamic_cast<Dialog *>(child); page && page->visible)
            return page;
    return nullptr;
}

static INT_PTR Run(Dialog &dialog, const DialogTemplate &shape, LPARAM parameter)
{
    dialog.Start(shape, parameter);
    if (dialog.closed)
        return dialog.result;
    NoteWindow(dialog, "opened");
    dialog.Show(true);
    Activate(&dialog);
    if (Window *first = FirstTabStop(dialog))
        TabInto(*first);
    RunModal(dialog);
    NoteWindow(dialog, "closed");
    return dialog.result;
}

} // namespace kvp

using namespace kvp;

INT_PTR DialogBoxParamA(HINSTANCE hInstance, LPCSTR lpTemplateName, HWND hWndParent,
                        DLGPROC lpDialogFunc, LPARAM dwInitParam)
{
    const auto shape = LoadTemplate(hInstance, lpTemplateName);
    if (!shape)
        return -1;
    Window *owner = Window::Of(hWndParent);
    const RECT client = PixelsOf(0, 0, shape->cx, shape->cy);
    const RECT whole = Around(client, HasFrame(nullptr, *shape));
    const RECT place = PlaceOver(owner, Width(whole), Height(whole));
    Dialog dialog(nullptr, *shape, static_cast<int>(reinterpret_cast<ULONG_PTR>(lpTemplateName)),
                  Moved(client, place.left, place.top), lpDialogFunc);
    const OwnerLock lock(dialog, owner);
    return Run(dialog, *shape, dwInitParam);
}

BOOL EndDialog(HWND hDlg, INT_PTR nResult)
{
    auto *dialog = dynamic_cast<Dialog *>(Window::Of(hDlg));
    if (!dialog || dialog->parent)
        return FALSE;
    dialog->result = nResult;
    dialog->closed = true;
    return TRUE;
}
