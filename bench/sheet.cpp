// Clocks run from what the person does to the moment when the layer asks what is done next: by then
// everything is painted.
#include "bench/sheet.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <limits>
#include <optional>

#include <fmt/format.h>

#include "bench/holdings.h"

namespace
{

using Clock = std::chrono::steady_clock;
// What the person does when asked for the n-th time; nothing: closes the sheet.
using Plan = std::function<std::optional<std::string>(int)>;

constexpr std::array<const char *, 3> PAGES = {"Main", "Paper", "Utility"};
constexpr const char *FILL = "plain fill of a page";
constexpr int LOOKS = 12; // at each opening; the best one counts

struct Printer {
    const LoadedDriver &driver;
    HANDLE hPrinter;
};

double Since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

std::string Tab(size_t page)
{
    return fmt::format("page \"{}\"", PAGES[page]);
}

void Show(const Printer &printer, const Plan &plan)
{
    int step = 0;
    kvp::SetInputSource([&]() -> std::optional<std::string> {
        if (step < 0)
            return std::nullopt;
        auto action = plan(step++);
        if (action)
            return action;
        step = -1;
        return "cancel";
    });
    DriverDevMode record{};
    const LONG result = printer.driver.DrvDocumentProperties(nullptr, printer.hPrinter, nullptr,
                                                             &record, nullptr, DM_PROMPT | DM_COPY);
    const bool failed = kvp::CurrentPlay().bFailed;
    kvp::SetInputSource(nullptr);
    if (result != IDCANCEL || failed)
        std::abort();
}

double SecondsToOpen(const Printer &printer)
{
    const auto start = Clock::now();
    double seconds = 0;
    Show(printer, [&](int) {
        seconds = Since(start);
        return std::nullopt;
    });
    return seconds;
}

// The best time from an action to the next question.
double BestOf(const Printer &printer, int before, const Plan &plan)
{
    double best = std::numeric_limits<double>::max();
    Clock::time_point start;
    Show(printer, [&](int step) {
        if (step > before)
            best = std::min(best, Since(start));
        auto action = step < before + LOOKS ? plan(step) : std::nullopt;
        start = Clock::now();
        return action;
    });
    return best;
}

double SecondsToRepaint(const Printer &printer, size_t page)
{
    return BestOf(printer, 1, [page](int step) -> std::optional<std::string> {
        if (step == 0)
            return Tab(page);
        InvalidateRect(kvp::TopWindow(), nullptr, TRUE);
        return "";
    });
}

// To a page that has been shown before, and from there.
double SecondsToSwitch(const Printer &printer, size_t from, size_t to)
{
    double best = std::numeric_limits<double>::max();
    Clock::time_point start;
    Show(printer, [&](int step) -> std::optional<std::string> {
        const bool there = step % 2 == 0;
        if (step > 2 && there)
            best = std::min(best, Since(start));
        if (step > 2 * LOOKS)
            return std::nullopt;
        start = Clock::now();
        return Tab(there ? from : to);
    });
    return best;
}

void FillPage(HBRUSH brush)
{
    HWND page = kvp::TopWindow();
    RECT whole{};
    GetClientRect(page, &whole);
    HDC hdc = GetDC(page);
    HRGN region = CreateRectRgnIndirect(&whole);
    FillRgn(hdc, region, brush);
    DeleteObject(region);
    ReleaseDC(page, hdc);
}

double SecondsToFill(const Printer &printer)
{
    double best = std::numeric_limits<double>::max();
    Show(printer, [&](int step) -> std::optional<std::string> {
        HBRUSH brush = CreateSolidBrush(RGB(192, 192, 192));
        const auto start = Clock::now();
        FillPage(brush);
        best = std::min(best, Since(start));
        DeleteObject(brush);
        return step < LOOKS ? std::optional<std::string>("") : std::nullopt;
    });
    return best;
}

void LookAtEveryPage(const Printer &printer)
{
    Show(printer, [](int step) {
        const auto page = static_cast<size_t>(step);
        return page < PAGES.size() ? std::optional(Tab(page)) : std::nullopt;
    });
}

} // namespace

std::vector<Row> SheetRows(const LoadedDriver &driver, HANDLE hPrinter, const std::string &floor)
{
    const Printer printer{driver, hPrinter};
    const auto look = [printer] { LookAtEveryPage(printer); };
    std::vector<Row> rows;
    rows.push_back({"sheet, to its first picture", look, floor, 1000, -1, -1,
                    [printer] { return SecondsToOpen(printer); }});
    rows.push_back({FILL, [] {}, FILL, 1, -1, -1, [printer] { return SecondsToFill(printer); }});
    for (size_t page = 0; page < PAGES.size(); ++page)
        rows.push_back({fmt::format("repaint {}", PAGES[page]), look, FILL, 18, -1, -1,
                        [printer, page] { return SecondsToRepaint(printer, page); }});
    for (size_t page = 0; page < PAGES.size(); ++page) {
        const size_t from = (page + 1) % PAGES.size();
        rows.push_back({fmt::format("switch to {}", PAGES[page]), look,
                        fmt::format("repaint {}", PAGES[page]), 2, -1, -1,
                        [printer, from, page] { return SecondsToSwitch(printer, from, page); }});
    }
    return rows;
}

bool OpeningsLeaveNothing(const LoadedDriver &driver, HANDLE hPrinter, int openings)
{
    const Printer printer{driver, hPrinter};
    return LeavesNothing("openings", openings, [&] { LookAtEveryPage(printer); });
}
