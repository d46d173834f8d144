// Rewriting a user's file on disk, and what is left of it when that fails.
#include "datafile/writer.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/datafile/model_test.h"
#include "tests/support/syscall_count.h"

namespace fs = std::filesystem;

namespace
{

// The model's tables are loaded; on disk lies the file that they came from.
class WriterTest : public ModelTest
{
  public:
    void SetUp() override
    {
        ModelTest::SetUp();
        fs::create_directories(Directory());
        model.userSettings = {SettingsRecord{}};
        model.userSettings[0].wState = STATE_IN_USE;
        model.AddUserPaper("Card", 850, 550, 2, 1);
        old = model.Ucf();
        PutDat(model.Dat());
        PutCfg(model.Cfg());
        PutOnDisk(old);
        ASSERT_TRUE(Get_DATFile(&dm));
        // What the user changes before the save.
        UIInstance.dat.lpUserPapers[0].paper.wWidth = 851;
        model.userPapers[0].paper.wWidth = 851;
    }

    fs::path Directory() const { return File().parent_path(); }
    fs::path File() const { return fs::path(machine.strRoot) / "c/winnt35/system32/KV1.ucf"; }
    void PutOnDisk(const Bytes &bytes) const
    {
        std::ofstream(File(), std::ios::binary) << std::string(bytes.begin(), bytes.end());
    }
    Bytes OnDisk() const
    {
        std::ifstream file(File(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool IsOldOrNew() const { return OnDisk() == old || OnDisk() == model.Ucf(); }
    HFILE Write() const { return WriteUcfFile(&dm, &UIInstance); }

    Bytes old;
};

TEST_F(WriterTest, TheFileIsRewrittenWholeWhateverWasThere)
{
    Bytes longer = old;
    longer.resize(old.size() + 500, 0x5A);
    for (const Bytes &there : {old, longer, Bytes{1, 2, 3}, Bytes{}}) {
        PutOnDisk(there);
        EXPECT_EQ(Write(), 0);
        EXPECT_EQ(OnDisk(), model.Ucf()) << there.size();
    }
    fs::remove(File());
    EXPECT_EQ(Write(), 0);
    EXPECT_EQ(OnDisk(), model.Ucf()) << "created";
}

TEST_F(WriterTest, TablesThatHoldLessThanTheirCapacityAreFilledUpWithZeros)
{
    UIInstance.dat.lpUserPapers.resize(1);
    UIInstance.dat.lpSettings.resize(1); // not even all the fixed ones
    EXPECT_EQ(Write(), 0);
    Bytes expected = model.Ucf();
    const size_t nPapersAt = 2 + 3 * sizeof(SettingsRecord);
    std::fill(expected.begin() + 2, expected.begin() + nPapersAt, 0);
    std::fill(expected.begin() + nPapersAt + sizeof(UserPaperRecord), expected.end(), 0);
    EXPECT_EQ(OnDisk(), expected);
    UIInstance.dat.CfgHeader.wUserSlots = UIInstance.dat.CfgHeader.wUserPaperSlots = 0;
    EXPECT_EQ(Write(), 0);
    EXPECT_EQ(OnDisk(), (Bytes{0, 1})) << "the version alone";
}

TEST_F(WriterTest, AnyFailedCallLeavesTheOldFileOrTheNewOne)
{
    for (const kvp::Call call : {kvp::Call::OpenFile, kvp::Call::Write, kvp::Call::Close}) {
        const int nFailures = WithEachFailure(call, [&](int n) {
            PutOnDisk(old);
            const HFILE hResult = Write();
            EXPECT_TRUE(IsOldOrNew()) << static_cast<int>(call);
            EXPECT_TRUE(hResult != 0 || OnDisk() == model.Ucf()) << "told that it was saved";
            EXPECT_TRUE(hResult == 0 || HasReached(call, n)) << "nothing else fails";
            fs::remove(File());
            kvp::FailCall(call, n);
            EXPECT_TRUE((Write() != 0 && OnDisk().empty()) || OnDisk() == model.Ucf());
        });
        // Looked for and opened; four writes of ours and the layer's; closed.
        EXPECT_GE(nFailures, call == kvp::Call::Write ? 5 : call == kvp::Call::OpenFile ? 2 : 1);
    }
}

TEST_F(WriterTest, AKilledProcessLeavesTheOldFileOrTheNewOne)
{
    size_t nCalls = 0, nOld = 0;
    for (bool bKilled = true; bKilled && nCalls < 1000; ++nCalls) {
        PutOnDisk(old);
        const auto result = KilledAtCall([&] { Write(); }, nCalls);
        if (!result)
            GTEST_SKIP() << "tracing is forbidden here";
        bKilled = *result;
        ASSERT_TRUE(IsOldOrNew()) << "killed at call " << nCalls;
        nOld += OnDisk() == old;
    }
    EXPECT_EQ(OnDisk(), model.Ucf()) << "in the end it is left alone";
    EXPECT_GT(nOld, 3u) << "and was killed before the new file stood";
}

TEST_F(WriterTest, AFileThatCannotBeWrittenStays)
{
    // A directory in its place: no user may write that, not even the superuser.
    fs::remove(File());
    fs::create_directory(File());
    EXPECT_EQ(Write(), HFILE_ERROR);
    EXPECT_TRUE(fs::is_directory(File()));
    fs::remove_all(Directory());
    EXPECT_EQ(Write(), HFILE_ERROR);
    EXPECT_FALSE(fs::exists(Directory()));
    EXPECT_THAT(BoxesShown(), ::testing::IsEmpty());
}

} // namespace
