// Message boxes: answered by the host's handler, by the person, or, where nobody can, with the
// button that does least; noted in the transcript, and on standard error when nobody saw them.
#include <mutex>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "platform/host.h"
#include "platform/kernel/internal.h"
#include "platform/user/box.h"
#include "platform/user/script.h"
#include "platform/user/transcript.h"

namespace kvp
{

static constexpr const char *aIcons[] = {"none", "stop", "question", "exclamation", "information"};

static const char *IconOf(UINT type)
{
    const UINT icon = type >> 4 & 0xF;
    return icon < std::size(aIcons) ? aIcons[icon] : aIcons[0];
}

// What a handler answers need not be one of the box's buttons.
static const char *NameOf(UINT type, int id)
{
    for (const BoxButton &button : BoxButtons(type))
        if (button.id == id)
            return button.name;
    return "none";
}

static void Record(const Box &box, int answer)
{
    nlohmann::ordered_json line = {{"event", "box"},
                                   {"caption", box.strCaption},
                                   {"text", box.strText},
                                   {"icon", IconOf(box.uType)},
                                   {"buttons", nlohmann::ordered_json::array()},
                                   {"answer", NameOf(box.uType, answer)}};
    for (const BoxButton &button : BoxButtons(box.uType))
        line["buttons"].push_back(button.name);
    WriteTranscript(line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

static void Say(const Box &box, int answer)
{
    std::string_view text = box.strText;
    while (text.ends_with('\n'))
        text.remove_suffix(1);
    fmt::print(stderr, "--- {} ({}) ---\n{}\n--- answered: {} ---\n", box.strCaption,
               IconOf(box.uType), text, NameOf(box.uType, answer));
}

static std::mutex handlerLock;
static std::function<int(const Box &)> boxHandler;

static std::function<int(const Box &)> CurrentHandler()
{
    const std::lock_guard lock(handlerLock);
    return boxHandler;
}

void SetBoxHandler(std::function<int(const Box &)> handler)
{
    const std::lock_guard lock(handlerLock);
    boxHandler = std::move(handler);
}

static int Show(const Box &box, Window *owner)
{
    BoxWindow window(owner, ToWide(box.strText), ToWide(box.strCaption), box.uType);
    const OwnerLock lock(window, owner);
    window.Show(true);
    Activate(&window);
    for (Window *button : window.children)
        if (window.IsStandard(*button))
            FocusOn(button);
    NoteWindow(window, "opened");
    RunModal(window);
    NoteWindow(window, "closed");
    return window.answer;
}

} // namespace kvp

using namespace kvp;

int WINAPI MessageBoxA(HWND hWnd, LPCSTR lpText, LPCSTR lpCaption, UINT uType)
{
    const Box box{AnsiToUtf8(lpText ? lpText : ""), AnsiToUtf8(lpCaption ? lpCaption : "Error"),
                  uType, hWnd != nullptr};
    int answer;
    if (const auto handler = CurrentHandler()) {
        answer = handler(box);
    } else if (CanAnswerBoxes()) {
        answer = Show(box, Window::Of(hWnd));
    } else {
        answer = SafestButton(uType);
        Say(box, answer);
    }
    Record(box, answer);
    return answer;
}
