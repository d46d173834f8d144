#include "tests/support/person.h"
#include "platform/win32.h"

#include <gtest/gtest.h>

void Person::Will(std::vector<Step> steps)
{
    aSteps.assign(steps.begin(), steps.end());
    kvp::SetInputSource([this]() -> std::optional<std::string> {
        if (aSteps.empty())
            return std::nullopt;
        const Step step = aSteps.front();
        aSteps.pop_front();
        if (const auto *line = std::get_if<const char *>(&step))
            return *line;
        if (const auto *line = std::get_if<std::string>(&step))
            return *line;
        std::get<std::function<void()>>(step)();
        return "";
    });
}

void Person::ExpectDone() const
{
    EXPECT_FALSE(kvp::CurrentPlay().bFailed) << kvp::CurrentPlay().strWhy;
    EXPECT_TRUE(aSteps.empty()) << aSteps.size() << " steps are left";
}

HWND Shown(int id)
{
    return GetDlgItem(kvp::TopWindow(), id);
}

nlohmann::json Seen(int id)
{
    const auto window = nlohmann::json::parse(kvp::DescribeTopWindow());
    if (window.is_null())
        return nullptr;
    for (const auto &control : window.at("controls"))
        if (control.at("id") == id)
            return control;
    return nullptr;
}

std::string SeenText(int id)
{
    const nlohmann::json control = Seen(id);
    if (!control.contains("items"))
        return control.at("text");
    const int nItem = control.at("selection");
    return nItem < 0 ? "" : control.at("items").at(static_cast<size_t>(nItem));
}

std::vector<std::string> SeenItems(int id)
{
    return Seen(id).at("items");
}

COLORREF PixelOf(int id, int x, int y)
{
    POINT at{x, y};
    ClientToScreen(Shown(id), &at);
    return kvp::ScreenPixel(at.x, at.y);
}

RECT ClientOf(int id)
{
    RECT rc{};
    GetClientRect(Shown(id), &rc);
    return rc;
}
