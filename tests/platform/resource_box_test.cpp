// Message boxes without a window: who answers, what is said and what is noted.
#include <fstream>

#include <gmock/gmock.h>

#include "tests/support/machine.h"

namespace
{

class MessageBoxes : public MachineTest
{
  protected:
    MessageBoxes()
    {
        machine.strTranscript = machine.strRoot + "/transcript";
        Apply();
    }

    std::string LastNoted() const
    {
        std::ifstream file(machine.strTranscript);
        std::string last;
        for (std::string line; std::getline(file, line);)
            last = line;
        return last;
    }
};

const struct {
    UINT uType;
    int nAnswer;
    const char *noted; // from the icon to the end
} aAnswers[] = {
    {MB_OK | MB_ICONINFORMATION, 1, R"("icon":"information","buttons":["ok"],"answer":"ok"})"},
    {0x101, 2, R"("icon":"none","buttons":["ok","cancel"],"answer":"cancel"})"},
    {0x23, 2, R"("icon":"question","buttons":["yes","no","cancel"],"answer":"cancel"})"},
    {0x14, 7, R"("icon":"stop","buttons":["yes","no"],"answer":"no"})"},
};

TEST_F(MessageBoxes, AreAnsweredWithTheSafestButton)
{
    kvp::SetBoxHandler(nullptr);
    for (const auto &row : aAnswers) {
        SCOPED_TRACE(row.noted);
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(MessageBoxA(nullptr, "Text", "KORVA", row.uType), row.nAnswer);
        EXPECT_THAT(::testing::internal::GetCapturedStderr(),
                    ::testing::ContainsRegex("KORVA.*\nText\n"));
        EXPECT_EQ(LastNoted(),
                  R"({"event":"box","caption":"KORVA","text":"Text",)" + std::string(row.noted));
    }
}

} // namespace
