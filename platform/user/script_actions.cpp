// The actions of scripts, as a person would carry them out.
#include <charconv>
#include <filesystem>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "platform/display/display.h"
#include "platform/host.h"
#include "platform/user/box.h"
#include "platform/user/combo.h"
#include "platform/user/dialog.h"
#include "platform/user/edit.h"
#include "platform/user/help.h"
#include "platform/user/listbox.h"
#include "platform/user/script.h"
#include "platform/user/scrollbar.h"
#include "platform/user/sheet.h"
#include "platform/user/transcript.h"

namespace kvp
{

using Words = std::vector<Word>;

[[noreturn]] static void Refuse(std::string why)
{
    throw ActionError{std::move(why)};
}

// ---- finding what an action is about ------------------------------------------------------------

static int NumberOf(const std::string &text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        Refuse(fmt::format("\"{}\" is no number", text));
    return number;
}

// The window on top. The help window lies beside the others: whoever means them clicks them.
static Window &TopForControls()
{
    Window *top = ActiveWindow();
    if (IsHelp(top)) {
        for (Window *other : TopLevels())
            if (other->visible && other->enabled && other->framed && !IsHelp(other))
                top = other;
        if (!IsHelp(top))
            Activate(top);
    }
    if (!top)
        Refuse("no window is open");
    if (dynamic_cast<BoxWindow *>(top))
        Refuse(fmt::format("the message box \"{}\" is on top", ToUtf8(top->text)));
    if (IsHelp(top))
        Refuse("the help window is on top");
    return *top;
}

static Window &FindControl(const Words &words)
{
    Window &top = TopForControls();
    const int id = NumberOf(words[1].text);
    Dialog *dialog = ShownDialog(top);
    Window *control = dialog ? dialog->Child(id) : nullptr;
    if (!control)
        Refuse(fmt::format("there is no control {} in \"{}\"", id,
                           ToUtf8(dialog ? dialog->text : top.text)));
    if (!control->IsShown())
        Refuse(fmt::format("control {} is hidden", id));
    return *control;
}

static Window &FindUsable(const Words &words)
{
    Window &control = FindControl(words);
    if (!control.IsUsable())
        Refuse(fmt::format("control {} is disabled", control.id));
    return control;
}

template <class T>
static T &As(Window &control, const char *kind)
{
    T *wanted = dynamic_cast<T *>(&control);
    if (!wanted)
        Refuse(fmt::format("control {} is no {}", control.id, kind));
    return *wanted;
}

// ---- the mouse ---------------------------------------------------------------------------------

static POINT MiddleOf(const RECT &rc)
{
    return {(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};
}

static POINT OnScreenOf(Window &window, POINT at)
{
    const POINT origin = window.ClientOnScreen();
    return {origin.x + at.x, origin.y + at.y};
}

static void QueueClick(POINT at)
{
    QueueInput({.kind = Input::MouseDown, .at = at});
    QueueInput({.kind = Input::MouseUp, .at = at});
}

static void QueueKey(Key key)
{
    QueueInput({.kind = Input::KeyPress, .key = key});
}

// An open list may lie over what is to be clicked: a person closes it first.
static void CloseOtherList(const Window *keep)
{
    const Popup *popup = CurrentPopup();
    const auto *combo = dynamic_cast<const ComboBox *>(FocusWindow());
    if (popup && !(combo && combo == keep && combo->dropped))
        QueueKey({.code = KeyCode::Escape});
}

static void ClickStep(const Words &words)
{
    const Window &control = FindUsable(words);
    const POINT at = MiddleOf(control.OnScreen());
    if (control.IsHit() && WindowAt(at) != &control)
        Refuse(fmt::format("control {} is covered", control.id));
    QueueClick(at);
}

static void DoClick(const Words &words)
{
    CloseOtherList(&FindUsable(words));
    QueueStep(ClickStep, words);
}

static void DoRightClick(const Words &words)
{
    Window &control = FindControl(words);
    CloseOtherList(nullptr);
    // The middle of a group is taken by what it holds; its text is not.
    POINT at = MiddleOf(control.OnScreen());
    if (!control.IsHit())
        at = OnScreenOf(control, {std::min(12, Width(control.rc) / 2), 3});
    QueueInput({.kind = Input::RightClick, .at = at});
}

// ---- lists -------------------------------------------------------------------------------------

static void DoDrop(const Words &words)
{
    auto &combo = As<ComboBox>(FindUsable(words), "drop-down list");
    if (combo.dropped)
        Refuse(fmt::format("the list {} is already open", combo.id));
    CloseOtherList(&combo);
    QueueStep(ClickStep, words);
}

static void DoClose(const Words &words)
{
    const auto &combo = As<ComboBox>(FindUsable(words), "drop-down list");
    if (!combo.dropped)
        Refuse(fmt::format("the list {} is not open", combo.id));
    QueueKey({.code = KeyCode::Escape});
}

static int ItemFor(const Items &items, const Word &word, int id)
{
    if (!word.quoted && word.text.starts_with('#')) {
        const int index = NumberOf(word.text.substr(1));
        if (!items.Has(index))
            Refuse(fmt::format("the list {} has {} items, none is #{}", id, items.Count(), index));
        return index;
    }
    const std::u16string text = ToWide(word.text);
    for (int i = 0; i < items.Count(); ++i)
        if (items.At(i).text == text)
            return i;
    Refuse(fmt::format("the list {} has no item \"{}\"", id, word.text));
}

static void ChooseOpenStep(const Words &words)
{
    auto &combo = As<ComboBox>(FindUsable(words), "drop-down list");
    if (!combo.dropped)
        Refuse(fmt::format("the list {} did not open", combo.id));
    const int index = ItemFor(combo.items, words[2], combo.id);
    auto &list = static_cast<DropList &>(CurrentPopup()->PopupWindow());
    list.ScrollTo(index);
    list.Invalidate();
    const POINT at = OnScreenOf(list, MiddleOf(list.ItemRect(index)));
    QueueInput({.kind = Input::MouseMove, .at = at});
    QueueClick(at);
}

static void ChooseInListBox(ListBox &list, const Words &words)
{
    const int index = ItemFor(list.items, words[2], list.id);
    list.ScrollTo(index);
    QueueClick(OnScreenOf(list, MiddleOf(list.ItemRect(index))));
}

static void DoChoose(const Words &words)
{
    Window &control = FindUsable(words);
    if (auto *list = dynamic_cast<ListBox *>(&control)) {
        CloseOtherList(nullptr);
        ChooseInListBox(*list, words);
        return;
    }
    if (!As<ComboBox>(control, "list").dropped)
        DoDrop(words);
    QueueStep(ChooseOpenStep, words);
}

// ---- text, keys, focus --------------------------------------------------------------------------

static void TypeStep(const Words &words)
{
    auto &edit = As<Edit>(FindUsable(words), "edit field");
    if (!edit.HasFocus())
        Refuse(fmt::format("control {} did not get the focus", edit.id));
    edit.Select(0, edit.text.size());
    const std::u16string text = ToWide(words[2].text);
    if (text.empty())
        QueueKey({.code = KeyCode::Delete});
    for (size_t i = 0; i < text.size(); ++i) {
        char32_t character = text[i];
        if (character >= 0xD800 && character < 0xDC00 && i + 1 < text.size())
            character = 0x10000 + ((character & 0x3FF) << 10) + (text[++i] & 0x3FF);
        QueueInput({.kind = Input::Character, .character = character});
    }
}

static void FocusStep(const Words &words)
{
    Window &control = FindUsable(words);
    if (!control.TakesFocus())
        Refuse(fmt::format("control {} takes no focus", control.id));
    TabInto(control);
}

static void DoType(const Words &words)
{
    if (As<Edit>(FindUsable(words), "edit field").IsReadOnly())
        Refuse(fmt::format("control {} is read-only", words[1].text));
    CloseOtherList(nullptr);
    QueueStep(FocusStep, words);
    QueueStep(TypeStep, words);
}

static void DoFocus(const Words &words)
{
    FindUsable(words);
    CloseOtherList(nullptr);
    QueueStep(FocusStep, words);
}

// What the keyboard of a display sends for a key: the key, and the character it makes.
static void DoKey(const Words &words)
{
    if (!ActiveWindow())
        Refuse("no window is open");
    const Key key = ParseKey(words[1].text);
    QueueKey(key);
    if (key.ctrl || key.alt)
        return;
    if (key.code == KeyCode::Space)
        QueueInput({.kind = Input::Character, .character = U' '});
    if (key.code == KeyCode::Letter)
        QueueInput({.kind = Input::Character, .character = key.letter});
}

// ---- bars ---------------------------------------------------------------------------------------

// Where pixels are too coarse for the thumb, the keys do the rest.
static void SlideRestStep(const Words &words)
{
    const auto &bar = As<Trackbar>(FindUsable(words), "trackbar");
    const int rest = NumberOf(words[2].text) - bar.position;
    for (int i = 0; i < std::abs(rest); ++i)
        QueueKey({.code = rest < 0 ? KeyCode::Left : KeyCode::Right});
}

static void DoSlide(const Words &words)
{
    auto &bar = As<Trackbar>(FindUsable(words), "trackbar");
    const int to = NumberOf(words[2].text);
    if (to < bar.least || to > bar.most)
        Refuse(fmt::format("the trackbar {} goes from {} to {}", bar.id, bar.least, bar.most));
    CloseOtherList(nullptr);
    QueueInput({.kind = Input::MouseDown, .at = OnScreenOf(bar, bar.ThumbAt(bar.position))});
    const POINT end = OnScreenOf(bar, bar.ThumbAt(to));
    QueueInput({.kind = Input::MouseMove, .at = end});
    QueueInput({.kind = Input::MouseUp, .at = end});
    QueueStep(SlideRestStep, words);
}

// A list box, or the open list of a drop-down list; null: it is neither.
static ScrolledList *ListOf(Window &control)
{
    auto *combo = dynamic_cast<ComboBox *>(&control);
    if (!combo)
        return dynamic_cast<ScrolledList *>(&control);
    if (!combo->dropped)
        Refuse(fmt::format("the list {} is not open", combo->id));
    return static_cast<DropList *>(&CurrentPopup()->PopupWindow());
}

// By one notch of the wheel, or by the thumb of its scroll bar until an item is the uppermost.
static void ScrollList(ScrolledList &list, const Word &how)
{
    if (!list.HasBar())
        Refuse("the list shows all of its items");
    if (how.text == "up" || how.text == "down") {
        QueueInput({.kind = Input::Wheel,
                    .at = OnScreenOf(list, MiddleOf(list.Client())),
                    .notches = how.text == "up" ? 1 : -1});
        return;
    }
    if (!how.text.starts_with('#'))
        Refuse("a list goes up, down or to an item");
    const POINT from = OnScreenOf(list, list.ThumbAt(list.Uppermost()));
    const POINT to = OnScreenOf(list, list.ThumbAt(NumberOf(how.text.substr(1))));
    QueueInput({.kind = Input::MouseDown, .at = from});
    QueueInput({.kind = Input::MouseMove, .at = {from.x, to.y}});
    QueueInput({.kind = Input::MouseUp, .at = {from.x, to.y}});
}

static void DoScroll(const Words &words)
{
    Window &control = FindUsable(words);
    if (ScrolledList *list = ListOf(control)) {
        CloseOtherList(&control);
        ScrollList(*list, words[2]);
        return;
    }
    auto &bar = As<ScrollBar>(control, "scroll bar");
    if (words[2].text != "up" && words[2].text != "down")
        Refuse("a scroll bar goes up or down");
    CloseOtherList(nullptr);
    QueueClick(OnScreenOf(bar, MiddleOf(bar.ArrowRect(words[2].text == "down"))));
}

// ---- windows ------------------------------------------------------------------------------------

static void DoPage(const Words &words)
{
    auto *sheet = dynamic_cast<Sheet *>(&TopForControls());
    if (!sheet)
        Refuse("the window on top has no pages");
    CloseOtherList(nullptr);
    const std::u16string title = ToWide(words[1].text);
    for (size_t i = 0; i < sheet->pages.size(); ++i)
        if (sheet->pages[i].title == title) {
            QueueClick(OnScreenOf(*sheet->tabs, MiddleOf(sheet->tabs->TabRect(i))));
            return;
        }
    Refuse(fmt::format("there is no page \"{}\"", words[1].text));
}

static void PressWindowButton(int id)
{
    Window &top = TopForControls();
    CloseOtherList(nullptr);
    Window *button = top.Child(id);
    if (!button || !button->IsShown())
        Refuse(fmt::format("\"{}\" has no such button", ToUtf8(top.text)));
    if (!button->IsUsable())
        Refuse("the button is disabled");
    QueueClick(MiddleOf(button->OnScreen()));
}

static void DoOk(const Words &)
{
    if (IsHelp(ActiveWindow()))
        QueueKey({.code = KeyCode::Escape});
    else
        PressWindowButton(IDOK);
}

static void DoCancel(const Words &)
{
    if (IsHelp(ActiveWindow()))
        QueueKey({.code = KeyCode::Escape});
    else
        PressWindowButton(IDCANCEL);
}

static void DoHelp(const Words &)
{
    PressWindowButton(9);
}

static void DoBox(const Words &words)
{
    auto *box = dynamic_cast<BoxWindow *>(ActiveWindow());
    if (!box)
        Refuse("no message box is on top");
    if (words.size() > 2 && ToUtf8(box->message) != words[2].text)
        Refuse(fmt::format("the message box says \"{}\"", ToUtf8(box->message)));
    for (const BoxButton &button : BoxButtons(box->type))
        if (button.name == words[1].text) {
            QueueClick(MiddleOf(box->Child(button.id)->OnScreen()));
            return;
        }
    Refuse(fmt::format("the message box has no button \"{}\"", words[1].text));
}

// ---- the transcript and pictures ----------------------------------------------------------------

static void DoPrint(const Words &words)
{
    Dialog *dialog = ShownDialog(TopForControls());
    Window *control = dialog ? dialog->Child(NumberOf(words[1].text)) : nullptr;
    if (!control)
        Refuse(fmt::format("there is no control {}", words[1].text));
    NoteEvent({{"event", "print"}, {"control", Describe(*control)}});
}

static void DoDump(const Words &)
{
    const nlohmann::ordered_json top = DescribeTop();
    if (top.is_null())
        Refuse("no window is open");
    nlohmann::ordered_json line = {{"event", "dump"}};
    line.update(top);
    NoteEvent(line);
}

static void DoShot(const Words &words)
{
    const std::string &name = words[1].text;
    if (name.empty() || name.find('/') != std::string::npos)
        Refuse(fmt::format("\"{}\" is no name for a picture", name));
    const std::filesystem::path folder = ShotsFolder().empty() ? "." : ShotsFolder();
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    const std::string file = (folder / (name + ".png")).string();
    if (!SaveScreen(file))
        Refuse(fmt::format("cannot write the picture {}", file));
    NoteEvent({{"event", "shot"}, {"name", name}});
}

// ---- dispatch -----------------------------------------------------------------------------------

static constexpr struct {
    const char *name;
    size_t least, most; // words, the name counted
    void (*run)(const Words &words);
    const char *usage;
} aActions[] = {
    {"page", 2, 2, DoPage, "page \"TITLE\""},
    {"click", 2, 2, DoClick, "click ID"},
    {"rightclick", 2, 2, DoRightClick, "rightclick ID"},
    {"drop", 2, 2, DoDrop, "drop ID"},
    {"close", 2, 2, DoClose, "close ID"},
    {"choose", 3, 3, DoChoose, "choose ID \"TEXT\" or choose ID #N"},
    {"type", 3, 3, DoType, "type ID \"TEXT\""},
    {"focus", 2, 2, DoFocus, "focus ID"},
    {"key", 2, 2, DoKey, "key NAME"},
    {"slide", 3, 3, DoSlide, "slide ID N"},
    {"scroll", 3, 3, DoScroll, "scroll ID up, scroll ID down or scroll ID #N"},
    {"box", 2, 3, DoBox, "box BUTTON \"TEXT\""},
    {"ok", 1, 1, DoOk, "ok"},
    {"cancel", 1, 1, DoCancel, "cancel"},
    {"help", 1, 1, DoHelp, "help"},
    {"print", 2, 2, DoPrint, "print ID"},
    {"dump", 1, 1, DoDump, "dump"},
    {"shot", 2, 2, DoShot, "shot NAME"},
};

void StartAction(const Words &words)
{
    for (const auto &action : aActions) {
        if (words[0].quoted || words[0].text != action.name)
            continue;
        if (words.size() < action.least || words.size() > action.most)
            Refuse(fmt::format("write {}", action.usage));
        action.run(words);
        return;
    }
    Refuse(fmt::format("there is no action \"{}\"", words[0].text));
}

} // namespace kvp
