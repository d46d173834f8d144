// The keyboard in a dialog: tab stops, groups, underlined letters, Enter, Escape and F1.
#include <algorithm>

#include "platform/kernel/names.h"
#include "platform/user/dialog.h"
#include "platform/user/window.h"

namespace kvp
{

// Every control of the window in order, those of pages in their places.
static void CollectControls(Window &window, std::vector<Window *> &controls)
{
    for (Window *child : window.children) {
        if (!child->visible)
            continue;
        if (DialogOf(child) == child)
            CollectControls(*child, controls);
        else
            controls.push_back(child);
    }
}

static std::vector<Window *> Controls(Window &window)
{
    std::vector<Window *> controls;
    CollectControls(window, controls);
    return controls;
}

static bool CanFocus(const Window &control)
{
    return control.IsShown() && control.IsUsable() && control.TakesFocus();
}

std::vector<Window *> GroupOf(const Window &control)
{
    const std::vector<Window *> &all = control.parent->children;
    const auto self = std::find(all.begin(), all.end(), &control);
    auto first = self;
    while (first != all.begin() && !((*first)->style & STYLE_GROUP))
        --first;
    const auto last =
        std::find_if(self + 1, all.end(), [](const Window *w) { return w->style & STYLE_GROUP; });
    return {first, last};
}

// Of a group of radio buttons the checked one stands for all.
static bool IsTabStop(const Window &control)
{
    if (!CanFocus(control))
        return false;
    if (!control.IsRadioButton())
        return control.style & WS_TABSTOP;
    const std::vector<Window *> group = GroupOf(control);
    const auto stop = [](const Window *w) { return w->IsRadioButton() && (w->style & WS_TABSTOP); };
    const auto checked = [](const Window *w) {
        return w->IsRadioButton() && w->IsChecked() && CanFocus(*w);
    };
    if (std::none_of(group.begin(), group.end(), stop))
        return false;
    if (std::any_of(group.begin(), group.end(), checked))
        return control.IsChecked();
    return control.style & WS_TABSTOP;
}

Window *FirstTabStop(Window &within)
{
    for (Window *control : Controls(within))
        if (IsTabStop(*control))
            return control;
    return nullptr;
}

Window *TabStopAfter(Window &control, bool backwards)
{
    std::vector<Window *> all = Controls(*control.Top());
    if (backwards)
        std::reverse(all.begin(), all.end());
    const auto self = std::find(all.begin(), all.end(), &control);
    if (self != all.end())
        std::rotate(all.begin(), self + 1, all.end());
    for (Window *candidate : all)
        if (IsTabStop(*candidate))
            return candidate;
    return nullptr;
}

void TabInto(Window &control)
{
    FocusOn(&control);
    control.TabbedInto();
}

// Where the keyboard is, also after the control there was disabled.
static Window *Here(Window &top)
{
    Window *focus = FocusWindow();
    return focus && focus->Top() == &top ? focus : top.focusBefore;
}

static bool OnTab(Window &top, bool backwards)
{
    Window *here = Here(top);
    Window *next = here ? TabStopAfter(*here, backwards) : FirstTabStop(top);
    if (next)
        TabInto(*next);
    return true;
}

// An arrow moves through the group; a radio button reached so is pressed.
static bool OnArrow(bool backwards)
{
    Window *focus = FocusWindow();
    if (!focus || !focus->parent)
        return false;
    std::vector<Window *> group = GroupOf(*focus);
    if (backwards)
        std::reverse(group.begin(), group.end());
    std::rotate(group.begin(), std::find(group.begin(), group.end(), focus) + 1, group.end());
    for (Window *next : group) {
        if (!CanFocus(*next) || next->IsRadioButton() != focus->IsRadioButton())
            continue;
        FocusOn(next);
        if (next->IsRadioButton() && next->HasFocus())
            next->Press();
        return true;
    }
    return false;
}

static bool OnEnter(Window &top)
{
    Window *focus = FocusWindow();
    if (focus && focus->IsPushButton() && focus->IsUsable())
        focus->Press();
    else
        top.PressDefault();
    return true;
}

// Help for the control with the focus goes to its page or dialog; for the sheet's own buttons to
// the page shown.
static bool OnHelpKey(Window &top)
{
    Window *focus = FocusWindow();
    Dialog *dialog = focus ? DialogOf(focus) : nullptr;
    if (!dialog)
        dialog = ShownDialog(top);
    if (!dialog)
        return false;
    Window *item = focus && DialogOf(focus) ? focus : dialog;
    HELPINFO info{sizeof info, 1, item->id, item->Handle(), 0, {}};
    dialog->Message(WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    return true;
}

bool DialogKey(const Key &key)
{
    Window *top = ActiveWindow();
    if (!top)
        return false;
    switch (key.code) {
    case KeyCode::Tab: return OnTab(*top, key.shift);
    case KeyCode::Up:
    case KeyCode::Left: return OnArrow(true);
    case KeyCode::Down:
    case KeyCode::Right: return OnArrow(false);
    case KeyCode::Enter: return OnEnter(*top);
    case KeyCode::Escape: top->PressCancel(); return true;
    case KeyCode::F1: return OnHelpKey(*top);
    case KeyCode::Letter: return key.alt && DialogLetter(key.letter);
    default: return false;
    }
}

static char32_t LetterOf(const std::u16string &text)
{
    for (size_t i = 0; i + 1 < text.size(); ++i)
        if (text[i] == u'&') {
            if (text[i + 1] != u'&')
                return LowerCase(text[i + 1]);
            ++i;
        }
    return 0;
}

// The search starts behind the control with the focus, so that a letter used twice reaches both.
bool DialogLetter(char32_t letter)
{
    Window *top = ActiveWindow();
    if (!top)
        return false;
    std::vector<Window *> all = Controls(*top);
    const auto here = std::find(all.begin(), all.end(), Here(*top));
    if (here != all.end())
        std::rotate(all.begin(), here + 1, all.end());
    for (Window *control : all)
        if (control->HasLetter() && control->IsUsable() &&
            LetterOf(control->text) == LowerCase(letter)) {
            control->LetterTyped();
            return true;
        }
    return false;
}

} // namespace kvp
