// Message boxes without a window: who answers, what is said and what is noted.
#include <fstream>

#include <gmock/gmock.h>

#include "tests/support/machine.h"

namespace
{

using ::testing::HasSubstr;

class MessageBoxes : public MachineTest
{
  protected:
    MessageBoxes()
    {
        machine.strTranscript = machine.strRoot + "/transcript";
        Apply();
    }

    std::vector<std::string> Transcript() const
    {
        std::ifstream file(machine.strTranscript);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }
};

const struct {
    const char *why;
    UINT uType;
    int nAnswer;
    const char *noted; // from the icon to the end
} aAnswers[] = {
    {"plain", MB_OK, 1, R"("icon":"none","buttons":["ok"],"answer":"ok"})"},
    {"information", MB_OK | MB_ICONINFORMATION, 1,
     R"("icon":"information","buttons":["ok"],"answer":"ok"})"},
    {"cancel is safer than ok", 1 | MB_ICONEXCLAMATION, 2,
     R"("icon":"exclamation","buttons":["ok","cancel"],"answer":"cancel"})"},
    {"cancel is safer than yes and no", 3 | 0x20, 2,
     R"("icon":"question","buttons":["yes","no","cancel"],"answer":"cancel"})"},
    {"no is safer than yes", 4 | 0x10, 7, R"("icon":"stop","buttons":["yes","no"],"answer":"no"})"},
    {"the default button does not matter", 0x101, 2,
     R"("icon":"none","buttons":["ok","cancel"],"answer":"cancel"})"},
};

TEST_F(MessageBoxes, AreAnsweredWithTheSafestButton)
{
    kvp::SetBoxHandler(nullptr);
    for (const auto &row : aAnswers) {
        SCOPED_TRACE(row.why);
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(MessageBoxA(nullptr, "Text", "KORVA", row.uType), row.nAnswer);
        const std::string said = ::testing::internal::GetCapturedStderr();
        EXPECT_THAT(said, HasSubstr("KORVA"));
        EXPECT_THAT(said, HasSubstr("\nText\n"));
        ASSERT_FALSE(Transcript().empty());
        EXPECT_EQ(Transcript().back(),
                  R"({"event":"box","caption":"KORVA","text":"Text",)" + std::string(row.noted));
    }
}

TEST_F(MessageBoxes, AHandlerAnswersInStead)
{
    machine.uAnsiCodePage = 932;
    Apply();
    nAnswer = 1;
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(MessageBoxA(nullptr, "\x8E\x86 \"A4\"\n", nullptr, 1), 1);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    ASSERT_EQ(aBoxes.size(), 1u);
    EXPECT_EQ(aBoxes[0].strText, "紙 \"A4\"\n");
    EXPECT_FALSE(aBoxes[0].bOwned);
    ASSERT_EQ(Transcript().size(), 1u);
    EXPECT_EQ(Transcript()[0], R"({"event":"box","caption":"Error","text":"紙 \"A4\"\n",)"
                               R"("icon":"none","buttons":["ok","cancel"],"answer":"ok"})");
}

} // namespace
