// Windows and controls as JSON: what a person sees of them.
#include <nlohmann/json.hpp>

#include "platform/host.h"
#include "platform/user/button.h"
#include "platform/user/combo.h"
#include "platform/user/dialog.h"
#include "platform/user/edit.h"
#include "platform/user/listbox.h"
#include "platform/user/scrollbar.h"
#include "platform/user/transcript.h"

namespace kvp
{

using Json = nlohmann::ordered_json;

void NoteEvent(const Json &line)
{
    WriteTranscript(line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

static Json Head(const Window &window)
{
    return {{"kind", window.Kind()}, {"id", window.id}, {"title", ToUtf8(window.text)}};
}

void NoteWindow(Window &window, const char *what)
{
    if (CurrentMachine().strTranscript.empty())
        return;
    Json line = {{"event", "window"}, {"what", what}};
    line.update(Head(window));
    NoteEvent(line);
}

void NoteReturn(Window &top)
{
    Dialog *shown = ShownDialog(top);
    NoteWindow(shown ? *shown : top, "activated");
}

static void AddItems(Json &json, const Items &items, int selection)
{
    json["items"] = Json::array();
    json["data"] = Json::array();
    for (int i = 0; i < items.Count(); ++i) {
        json["items"].push_back(ToUtf8(items.At(i).text));
        json["data"].push_back(items.At(i).data);
    }
    json["selection"] = selection;
}

static void AddOwn(Json &json, Window &control)
{
    if (const auto *mark = dynamic_cast<const MarkButton *>(&control)) {
        json["checked"] = mark->IsChecked();
    } else if (const auto *combo = dynamic_cast<const ComboBox *>(&control)) {
        AddItems(json, combo->items, combo->selection);
        json["dropped"] = combo->dropped;
    } else if (const auto *list = dynamic_cast<const ListBox *>(&control)) {
        AddItems(json, list->items, list->selection);
    } else if (const auto *edit = dynamic_cast<const Edit *>(&control)) {
        json["readonly"] = edit->IsReadOnly();
    } else if (const auto *bar = dynamic_cast<const Trackbar *>(&control)) {
        json["position"] = bar->position;
        json["range"] = {bar->least, bar->most};
    }
}

Json Describe(Window &control)
{
    Json json = {{"id", control.id},
                 {"kind", control.Kind()},
                 {"text", ToUtf8(control.text)},
                 {"enabled", control.enabled},
                 {"visible", control.visible}};
    AddOwn(json, control);
    if (control.picture)
        json["picture"] = control.picture;
    return json;
}

static Json DescribeWindow(Window &window)
{
    Json json = {{"window", Head(window)}, {"controls", Json::array()}};
    for (Window *control : window.children)
        json["controls"].push_back(Describe(*control));
    if (const Window *focus = FocusWindow(); focus && focus->parent == &window)
        json["focus"] = focus->id;
    return json;
}

Json DescribeTop()
{
    Window *top = ActiveWindow();
    if (!top)
        return nullptr;
    Dialog *dialog = ShownDialog(*top);
    return DescribeWindow(dialog ? *dialog : *top);
}

} // namespace kvp

std::string kvp::DescribeTopWindow()
{
    PaintInvalid(); // what was drawn last is part of it
    return DescribeTop().dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}
