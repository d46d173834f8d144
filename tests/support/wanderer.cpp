// What can be done with each kind of control.
#include "tests/support/wanderer.h"

#include <array>
#include <vector>

#include "platform/host.h"

using nlohmann::json;

// clang-format off
static constexpr std::array aTexts = {
    "", "0", "1", "7", "-5", "+12", "99", "150", "2100", "9999", "-99999", "999999999", "x\"\"",
    "Name", "A4", "   ", "-", "Sizes of a name that is far too long", "User Defined"};
// clang-format on
static constexpr std::array aKeys = {"Tab",  "Shift+Tab", "Space", "Up",    "Down", "Left",
                                     "Home", "End",       "F1",    "Right", "Enter"};

Wanderer::Wanderer(Chance chance, int nActions, std::string leaveBy)
    : Pick(std::move(chance)), nActionsLeft(nActions), strLeaveBy(std::move(leaveBy))
{
}

static std::string IdOf(const json &control)
{
    return std::to_string(control.at("id").get<int>());
}

static bool CanBeUsed(const json &control)
{
    const std::string kind = control.at("kind");
    if (!control.at("enabled") || !control.at("visible") || control.at("id") == 65535)
        return false;
    if (control.value("readonly", false))
        return false;
    return kind != "static" && kind != "frame" && kind != "group";
}

// A drop-down list is opened first: what it holds may change with that.
std::string Wanderer::OnList(const json &control)
{
    const auto nItems = static_cast<uint32_t>(control.at("items").size());
    const std::string id = IdOf(control);
    const bool bCombo = control.at("kind") == "combobox";
    if (bCombo && !control.at("dropped"))
        return "drop " + id;
    if (bCombo && (nItems == 0 || Pick(4) == 0))
        return "close " + id;
    return nItems == 0 ? "" : "choose " + id + " #" + std::to_string(Pick(nItems));
}

std::string Wanderer::OnControl(const json &control)
{
    const std::string kind = control.at("kind"), id = IdOf(control);
    if (kind == "combobox" || kind == "listbox")
        return OnList(control);
    if (kind == "edit")
        return "type " + id + " \"" + aTexts[Pick(aTexts.size())] + "\"";
    if (kind == "scrollbar")
        return "scroll " + id + (Pick(2) ? " up" : " down");
    if (kind == "trackbar") {
        const int nLeast = control.at("range")[0], nMost = control.at("range")[1];
        return "slide " + id + " " +
               std::to_string(nLeast +
                              static_cast<int>(Pick(static_cast<uint32_t>(nMost - nLeast + 1))));
    }
    return (Pick(20) == 0 ? "rightclick " : "click ") + id;
}

std::string Wanderer::Act(const json &window)
{
    const std::string kind = window.at("window").at("kind");
    if (kind == "box")
        return Pick(2) ? "key Enter" : "key Escape";
    if (kind == "help")
        return "key Escape";
    std::vector<json> usable;
    for (const json &control : window.at("controls")) {
        if (control.value("dropped", false))
            return OnList(control);
        if (CanBeUsed(control))
            usable.push_back(control);
    }
    if (kind == "page" && Pick(8) == 0) {
        static constexpr std::array aPages = {"Main", "Paper", "Utility"};
        return std::string("page \"") + aPages[Pick(aPages.size())] + "\"";
    }
    // Enter and Escape would leave a page's sheet before its time.
    if (usable.empty() || Pick(8) == 0)
        return std::string("key ") + aKeys[Pick(kind == "page" ? aKeys.size() - 1 : aKeys.size())];
    return OnControl(usable[Pick(static_cast<uint32_t>(usable.size()))]);
}

std::string Wanderer::Leave(const json &window) const
{
    for (const json &control : window.at("controls"))
        if (control.value("dropped", false))
            return "close " + IdOf(control);
    return window.at("window").at("kind") == "page" ? strLeaveBy : "key Escape";
}

std::optional<std::string> Wanderer::Next()
{
    const json window = json::parse(kvp::DescribeTopWindow());
    if (window.is_null())
        return std::nullopt;
    return nActionsLeft-- > 0 ? Act(window) : Leave(window);
}
