// Message boxes without a window: said on standard error, noted in the transcript, answered by
// the host's handler or else with the button that does least.
#include <array>
#include <mutex>
#include <span>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "platform/host.h"

namespace kvp
{

namespace
{

struct Button {
    int nId;
    const char *name;
};
constexpr Button OK{1, "ok"}, CANCEL{2, "cancel"}, ABORT{3, "abort"}, RETRY{4, "retry"},
    IGNORE{5, "ignore"}, YES{6, "yes"}, NO{7, "no"};

// The boxes by their type's low bits. The safest button is the one that does least.
struct Kind {
    std::array<Button, 3> buttons;
    size_t nButtons;
    Button safest;
};
constexpr Kind aKinds[] = {
    {{OK}, 1, OK},
    {{OK, CANCEL}, 2, CANCEL},
    {{ABORT, RETRY, IGNORE}, 3, ABORT},
    {{YES, NO, CANCEL}, 3, CANCEL},
    {{YES, NO}, 2, NO},
    {{RETRY, CANCEL}, 2, CANCEL},
};

constexpr const char *aIcons[] = {"none", "stop", "question", "exclamation", "information"};

const Kind &KindOf(UINT uType)
{
    const UINT kind = uType & 0xF;
    return kind < std::size(aKinds) ? aKinds[kind] : aKinds[0];
}

const char *IconOf(UINT uType)
{
    const UINT icon = uType >> 4 & 0xF;
    return icon < std::size(aIcons) ? aIcons[icon] : aIcons[0];
}

std::span<const Button> ButtonsOf(const Kind &kind)
{
    return {kind.buttons.data(), kind.nButtons};
}

// What a handler answers need not be one of the box's buttons.
const char *NameOf(const Kind &kind, int nId)
{
    for (const Button &button : ButtonsOf(kind))
        if (button.nId == nId)
            return button.name;
    return "none";
}

void Record(const Box &box, int nAnswer)
{
    const Kind &kind = KindOf(box.uType);
    nlohmann::ordered_json line = {{"event", "box"},
                                   {"caption", box.strCaption},
                                   {"text", box.strText},
                                   {"icon", IconOf(box.uType)},
                                   {"buttons", nlohmann::ordered_json::array()},
                                   {"answer", NameOf(kind, nAnswer)}};
    for (const Button &button : ButtonsOf(kind))
        line["buttons"].push_back(button.name);
    WriteTranscript(line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

void Say(const Box &box, int nAnswer)
{
    std::string_view text = box.strText;
    while (text.ends_with('\n'))
        text.remove_suffix(1);
    fmt::print(stderr, "--- {} ({}) ---\n{}\n--- answered: {} ---\n", box.strCaption,
               IconOf(box.uType), text, NameOf(KindOf(box.uType), nAnswer));
}

std::mutex handlerLock;
std::function<int(const Box &)> boxHandler;

std::function<int(const Box &)> CurrentHandler()
{
    const std::lock_guard lock(handlerLock);
    return boxHandler;
}

} // namespace

void SetBoxHandler(std::function<int(const Box &)> handler)
{
    const std::lock_guard lock(handlerLock);
    boxHandler = std::move(handler);
}

} // namespace kvp

int WINAPI MessageBoxA(HWND hWnd, LPCSTR lpText, LPCSTR lpCaption, UINT uType)
{
    const kvp::Box box{kvp::AnsiToUtf8(lpText ? lpText : ""),
                       kvp::AnsiToUtf8(lpCaption ? lpCaption : "Error"), uType, hWnd != nullptr};
    const auto handler = kvp::CurrentHandler();
    const int nAnswer = handler ? handler(box) : kvp::KindOf(uType).safest.nId;
    if (!handler)
        kvp::Say(box, nAnswer);
    kvp::Record(box, nAnswer);
    return nAnswer;
}
