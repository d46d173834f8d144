// The sheet on damaged records: every byte changed by itself, and every pair of sizes at its edges.
// The ordinary run gives each byte one value; with KV_ALL_DAMAGE in the environment it gets all.
#include <cstdlib>
#include <cstring>

#include <gmock/gmock.h>

#include "base/modeltable.h"
#include "base/module.h"
#include "interface/sheet.h"
#include "resources/paper_ids.h"
#include "tests/support/samples.h"

namespace
{

using ::testing::IsEmpty;

class DamagedRecord : public SampleTest
{
  protected:
    DamagedRecord()
    {
        kvp::SetBoxHandler([](const kvp::Box &) { return IDOK; }); // a saved setting that is lost
        Start(SMALL_SAMPLE);
        for (const bool bAutoMode : {true, false}) {
            in.bAutoMode = bAutoMode;
            in.Settings.wIndex = bAutoMode ? in.Settings.wIndex : KV_CUSTOM_SETTINGS;
            wholes.push_back(in);
        }
    }
    // Automatic and custom settings, damaged in each way that there is, one after the other.
    void ForEach(const std::function<void()> &check)
    {
        for (const DriverDevMode &whole : wholes) {
            for (size_t at = 0; at < sizeof whole; ++at)
                ChangeByte(whole, at, check);
            for (const auto &[nFirst, nSecond] : aSizes)
                for (const uint16_t wFirst : aEdges)
                    for (const uint16_t wSecond : aEdges)
                        ChangeSizes(whole, {nFirst, nSecond}, {wFirst, wSecond}, check);
        }
    }
    // What the driver makes of a record without a sheet.
    DriverDevMode Merged(DriverDevMode record)
    {
        DriverDevMode merged{};
        EXPECT_EQ(driver.DrvDocumentProperties(nullptr, queue->hPrinter, nullptr, &merged, &record,
                                               DM_MODIFY | DM_COPY),
                  IDOK);
        return merged;
    }
    // The places where they are not alike.
    static std::vector<size_t> Differences(const DriverDevMode &a, const DriverDevMode &b)
    {
        std::vector<size_t> places;
        for (size_t at = 0; at < sizeof a; ++at)
            if (reinterpret_cast<const char *>(&a)[at] != reinterpret_cast<const char *>(&b)[at])
                places.push_back(at);
        return places;
    }

  private:
    void ChangeByte(const DriverDevMode &whole, size_t at, const std::function<void()> &check)
    {
        const uint8_t b = reinterpret_cast<const uint8_t *>(&whole)[at];
        const uint8_t aValues[] = {0, 0xFF, static_cast<uint8_t>(b ^ 0x80),
                                   static_cast<uint8_t>(b + 1)};
        for (size_t i = 0; i < 4; ++i) {
            if (i != at % 4 && !std::getenv("KV_ALL_DAMAGE"))
                continue;
            SCOPED_TRACE("byte " + std::to_string(at) + " is " + std::to_string(aValues[i]));
            in = whole;
            reinterpret_cast<uint8_t *>(&in)[at] = aValues[i];
            check();
        }
    }
    void ChangeSizes(const DriverDevMode &whole, std::array<size_t, 2> at,
                     std::array<uint16_t, 2> sizes, const std::function<void()> &check)
    {
        in = whole;
        in.dm.dmPaperSize = KV_PAPER_USER;
        in.dm.dmFields |= KV_DM_PAPERSIZE | KV_DM_PAPERLENGTH | KV_DM_PAPERWIDTH;
        for (const size_t i : {0, 1})
            std::memcpy(reinterpret_cast<uint8_t *>(&in) + at[i], &sizes[i], sizeof sizes[i]);
        SCOPED_TRACE(testing::Message()
                     << at[0] << " is " << sizes[0] << ", " << at[1] << " is " << sizes[1]);
        check();
    }

    // The record's own and a sheet's, as three forms of the latter.
    static constexpr std::array<size_t, 2> aSizes[] = {
        {offsetof(DriverDevMode, dm.dmSize), offsetof(DriverDevMode, dm.dmDriverExtra)},
        {offsetof(DriverDevMode, dm.dmPaperWidth), offsetof(DriverDevMode, dm.dmPaperLength)},
        {offsetof(DriverDevMode, lPaperWidth), offsetof(DriverDevMode, lPaperLength)},
        {offsetof(DriverDevMode, wPaperWidth360), offsetof(DriverDevMode, wPaperLength360)}};
    static constexpr uint16_t aEdges[] = {0, 1, 20, 0x7FFF, 0xFFFF};
    std::vector<DriverDevMode> wholes;
};

TEST_F(DamagedRecord, ComesOutOfTheSheetLegalAndAsItsListsShowIt)
{
    int nPaper = 0;
    const auto look = [&] {
        const auto page = nlohmann::json::parse(kvp::DescribeTopWindow());
        for (const auto &list : page.at("controls")) {
            if (list.at("kind") != "combobox" || !list.at("visible"))
                continue;
            const int nSelection = list.at("selection");
            if (in.Settings.wInk > 1 && nSelection == -1)
                continue; // nothing is for such an ink
            ASSERT_TRUE(nSelection >= 0 && nSelection < static_cast<int>(list["items"].size()))
                << list;
            if (page["window"]["id"] == IDD_PAPER && list["id"] == IDC_PAPER_SIZE)
                nPaper = list["data"][static_cast<size_t>(nSelection)];
        }
    };
    ForEach([&] {
        EXPECT_EQ(Show({look, "page \"Paper\"", look, "page \"Utility\"", "ok"}), IDOK);
        EXPECT_EQ(int{out.nPaper}, nPaper);
        DriverDevMode again = Merged(out);
        if (out.Settings.wInk > 1) // a merge reads 16 bits of the ink, the page the low eight
            again.dm.dmColor = out.dm.dmColor;
        EXPECT_THAT(Differences(out, again), IsEmpty());
    });
}

// Handed to the pages as it is, where nothing has checked it.
TEST_F(DamagedRecord, LeadsNoPageAstray)
{
    LoadDataFile();
    hModule = kvp::LoadHostLibrary(KV_DRIVER_RESOURCES);
    ForEach([&] {
        CBSTRUC block{};
        block.hPrinter = queue->hPrinter;
        if (in.dm.dmOrientation == 0) { // there are no settings to show
            EXPECT_EQ(UIEnterDevMode(&in, hModule, nullptr, 0, &block), -1);
            return;
        }
        person.Will({"click 5041", "click 5042", "click 5044", "click 5047", "page \"Paper\"",
                     "click 5043", "scroll 5161 up", "page \"Utility\"", "ok"});
        EXPECT_EQ(UIEnterDevMode(&in, hModule, nullptr, 0, &block), IDOK);
        person.ExpectDone();
        // What is left of a record that is taken for none is the defaults, whose margins have no
        // bounds until they are merged themselves.
        const DriverDevMode merged = Merged(Merged(in));
        EXPECT_THAT(Differences(merged, Merged(merged)), IsEmpty());
    });
    FreeLibrary(hModule);
    hModule = nullptr;
    FreeDataFile();
}

} // namespace
