// Every call that the sheet makes of the outside fails once, each in its turn, while somebody goes
// through all pages and dialogs and saves and deletes: nothing breaks, nothing leaks, and what was
// saved is there as it was or as it is to be.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include <gmock/gmock.h>

#include "tests/support/held.h"
#include "tests/support/samples.h"

namespace fs = std::filesystem;

namespace
{
// Lines that cannot be carried out, because something failed before them, are passed over.
const char *const aJourney[] = {
    "click 5042",
    "click 2019",
    "type 5204 \"Kept\"",
    "click 5230",
    "click 2017",
    "click 5048",
    "click 1",
    "page \"Paper\"",
    "choose 5040 \"User Defined\"",
    "type 5256 \"Card\"",
    "click 5257",
    "click 5255",
    "click 1",
    "page \"Utility\"",
    "click 2020",
    "page \"Main\"",
    "click 2019",
    "type 5204 \"Kept\"",
    "click 2017",
    "help",
};
} // namespace

class SheetFailures : public SampleTest
{
  protected:
    // The journey's lines, boxes answered with Enter, and at the end everything closed by Escape.
    void Go()
    {
        size_t nLine = 0;
        kvp::SetInputSource([&]() -> std::optional<std::string> {
            const auto window = nlohmann::json::parse(kvp::DescribeTopWindow());
            if (window.is_null())
                return std::nullopt;
            const std::string kind = window.at("window").at("kind");
            if (kind == "box")
                return "key Enter";
            if (kind == "help")
                return "key Escape";
            while (nLine < std::size(aJourney))
                if (const char *line = aJourney[nLine++]; CanBeDone(window, line))
                    return line;
            return kind == "page" ? "ok" : "key Escape";
        });
        lResult = driver.DrvDocumentProperties(nullptr, queue->hPrinter, nullptr, &out, &in,
                                               DM_PROMPT | DM_MODIFY | DM_COPY);
        kvp::SetInputSource(nullptr);
    }

    static bool CanBeDone(const nlohmann::json &window, const std::string &line)
    {
        if (line.starts_with("page") || line == "help")
            return window.at("window").at("kind") == "page";
        const int id = std::stoi(line.substr(line.find(' ') + 1));
        for (const auto &control : window.at("controls"))
            if (control.at("id") == id)
                return control.at("enabled") && control.at("visible") &&
                       (!line.starts_with("choose") ||
                        std::ranges::count(control.at("items"), "User Defined") > 0);
        return false;
    }

    static std::string UserFile()
    {
        std::ifstream file(kvp::HostPath(std::string(SYSTEM_DIR) + "KJ820PRO.ucf"),
                           std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void ForgetWhatWasSaved()
    {
        fs::remove(kvp::HostPath(std::string(SYSTEM_DIR) + "KJ820PRO.ucf"));
    }

    LONG lResult = 0;
};

TEST_F(SheetFailures, EachCallInItsTurn)
{
    Start();
    Go(); // what is made once and kept is there from now on
    ASSERT_EQ(lResult, IDOK);
    const size_t cbSaved = UserFile().size();
    ASSERT_GT(cbSaved, 0u);
    const auto held = HeldNow();
    int nFailures = 0;
    ForgetWhatWasSaved();
    for (int nCall = 0; nCall < static_cast<int>(kvp::Call::Count); ++nCall)
        nFailures += WithEachFailure(
            static_cast<kvp::Call>(nCall), [&](int) { Go(); },
            [&] {
                EXPECT_THAT(lResult, testing::AnyOf(IDOK, IDCANCEL, 0, -1));
                // No file, one that has been made and not yet written, or a whole one.
                const std::string now = UserFile();
                EXPECT_TRUE(now.empty() || (now.size() == cbSaved && now[1] == 1)) << now.size();
                EXPECT_EQ(HeldNow(), held);
                ForgetWhatWasSaved();
            });
    std::cout << nFailures << " calls failed in turn\n";
}
