// The spooler's store: names, several processes at once, damage, and failures in the middle.
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/machine.h"

namespace
{

namespace fs = std::filesystem;
constexpr DWORD DAMAGED = 1009;
using Bytes = std::vector<uint8_t>;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Matcher;
const Bytes RECORD(562, 1), OTHER_RECORD(562, 2);

std::string WhyNot(const std::function<void()> &action)
{
    try {
        action();
    } catch (const kvp::SpoolError &error) {
        return error.what();
    }
    return {};
}

std::string Content(const std::string &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Another process that does something when it is told to. It has to be made before this process
// opens the store: a connection must not be shared across a fork.
class Other
{
  public:
    explicit Other(const std::function<void()> &action)
    {
        if (pipe(an) != 0)
            std::abort();
        nProcess = fork();
        if (nProcess != 0)
            return;
        char c;
        const bool bGo = read(an[0], &c, 1) == 1;
        _exit(bGo && WhyNot(action).empty() ? 0 : 1);
    }
    ~Other()
    {
        close(an[0]);
        close(an[1]);
    }
    Other(const Other &) = delete;
    Other &operator=(const Other &) = delete;
    void Start() const { ASSERT_EQ(write(an[1], "!", 1), 1); }
    bool Ended() const // well
    {
        int nStatus = 1;
        return waitpid(nProcess, &nStatus, 0) == nProcess && nStatus == 0;
    }
    bool Acts() const { return (Start(), Ended()); }

  private:
    int an[2];
    pid_t nProcess;
};

class SpoolerStore : public MachineTest
{
  protected:
    std::string Path() const { return machine.strRoot + "/spool.db"; }
};

TEST_F(SpoolerStore, ReadersCreateNothing)
{
    machine.strRoot += "/not/yet";
    Apply();
    EXPECT_TRUE(kvp::Queues().empty());
    EXPECT_THAT(WhyNot([] { kvp::RemoveQueue("Office"); }), HasSubstr("no printer \"Office\""));
    EXPECT_THAT(WhyNot([] { kvp::SetQueueDefault("Office", RECORD); }), HasSubstr("no printer"));
    EXPECT_FALSE(fs::exists(machine.strRoot));
    kvp::AddQueue("Office", "KORVA Q1");
    EXPECT_TRUE(fs::exists(Path()));
}

TEST_F(SpoolerStore, NamesThatWouldBreakTextsAndPathsAreRefused)
{
    const std::string strLongest(220, 'x');
    const struct {
        const char *why;
        std::string name, driver, server, complaint;
    } aRows[] = {
        {"no name", "", "KORVA", "", "printer's name is empty"},
        {"no driver", "Q", "", "", "driver's name is empty"},
        {"a backslash", "a\\b", "KORVA", "", "backslash"},
        {"a control character in the driver's", "Q", "K\x1b[2J", "", "control character"},
        {"one in the server's", "Q", "KORVA", "a\nb", "server's name"},
        {"one character too many", strLongest + "y", "KORVA", "", "221 characters"},
        {"not UTF-8", "a\xff", "KORVA", "", "UTF-8"},
        {"the longest", strLongest, "KORVA", "", ""},
        {"what people write", "Büro, 2. Stock (プリンタ)", "KORVA", "", ""},
        {"there already", "bÜRO, 2. stock (プリンタ)", "KORVA", "", "already"},
    };
    for (const auto &row : aRows)
        EXPECT_THAT(WhyNot([&] { kvp::AddQueue(row.name, row.driver, row.server); }),
                    row.complaint.empty() ? Matcher<std::string>(IsEmpty())
                                          : HasSubstr(row.complaint))
            << row.why;
    EXPECT_THAT(WhyNot([&] { kvp::SetQueueDefault(strLongest, Bytes(131071)); }),
                HasSubstr("large"));
}

TEST_F(SpoolerStore, PrintersAreListedByName)
{
    kvp::AddQueue("Über", "KORVA Q1");
    kvp::AddQueue("Annex", "KORVA Q2", "\\\\alpha");
    kvp::SetQueueDefault("über", RECORD);
    std::string all;
    for (const kvp::Queue &queue : kvp::Queues())
        all += queue.strName + '|' + queue.strDriver + '|' + queue.strServer +
               (queue.bHasDefault ? "|default\n" : "\n");
    EXPECT_EQ(all, "Annex|KORVA Q2|alpha\nÜber|KORVA Q1||default\n");
}

TEST_F(SpoolerStore, AHundredProcessesAddingAtOnceLoseNothing)
{
    std::vector<std::unique_ptr<Other>> others;
    others.reserve(100);
    for (int i = 0; i < 100; ++i)
        others.push_back(std::make_unique<Other>(
            [i] { kvp::AddQueue("Printer " + std::to_string(i), "KORVA Q1"); }));
    for (const auto &other : others)
        other->Start();
    for (const auto &other : others)
        EXPECT_TRUE(other->Ended());
    EXPECT_EQ(kvp::Queues().size(), 100u);
}

TEST_F(SpoolerStore, AChangeByAnotherProcessIsSeenAtOnce)
{
    const Other changer([] { kvp::SetQueueDefault("Office", OTHER_RECORD); });
    const Other remover([] { kvp::RemoveQueue("office"); });
    kvp::AddQueue("Office", "KORVA Q1");
    kvp::SetQueueDefault("Office", RECORD);
    EXPECT_EQ(kvp::QueueDefault("Office"), RECORD); // remembered from now on
    ASSERT_TRUE(changer.Acts());
    EXPECT_EQ(kvp::QueueDefault("Office"), OTHER_RECORD);
    ASSERT_TRUE(remover.Acts());
    EXPECT_THAT(WhyNot([] { kvp::QueueDefault("Office"); }), HasSubstr("no printer"));
}

std::string SqliteFile(const std::string &path, const char *sql)
{
    sqlite3 *pDb = nullptr;
    sqlite3_open(path.c_str(), &pDb);
    EXPECT_EQ(sqlite3_exec(pDb, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(pDb);
    return Content(path);
}

TEST_F(SpoolerStore, ADamagedOrForeignFileIsToldAndLeftAlone)
{
    kvp::AddQueue("Office", "KORVA Q1");
    const std::string strGood = Content(Path());
    std::string strScrambled = strGood;
    for (size_t i = 100; i < strScrambled.size(); ++i)
        strScrambled[i] = static_cast<char>(i * 7);
    const std::string strOther = machine.strRoot + "/other.db";
    const std::string strForeign = SqliteFile(strOther, "CREATE TABLE printer (key TEXT)");
    fs::copy_file(Path(), strOther, fs::copy_options::overwrite_existing);
    const std::string strLater = SqliteFile(strOther, "PRAGMA user_version = 2");
    const struct {
        const char *why;
        std::string content, complaint;
    } aRows[] = {
        {"no database", "hello, this is a letter to a friend of mine\n", "damaged"},
        {"cut in half", strGood.substr(0, strGood.size() / 2), "damaged"},
        {"scrambled after its header", strScrambled, "damaged"},
        {"another program's", strForeign, "another program's"},
        {"a later version's", strLater, "another version"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        std::ofstream(Path(), std::ios::binary) << row.content;
        Apply();
        HANDLE hPrinter = nullptr;
        char szName[] = "Office";
        EXPECT_THAT(WhyNot([] { kvp::Queues(); }), HasSubstr(row.complaint));
        EXPECT_THAT(WhyNot([] { kvp::AddQueue("New", "KORVA"); }), HasSubstr(row.complaint));
        EXPECT_FALSE(OpenPrinterA(szName, &hPrinter, nullptr));
        EXPECT_EQ(GetLastError(), DAMAGED);
        EXPECT_EQ(Content(Path()), row.content);
    }
}

TEST_F(SpoolerStore, AFileThatAnotherProgramPutInLogModeIsTakenBack)
{
    kvp::AddQueue("Office", "KORVA Q1");
    Apply();
    SqliteFile(Path(), "PRAGMA journal_mode = WAL; UPDATE printer SET driver = 'KORVA Q2'");
    const Other changer([] { kvp::SetQueueDefault("Office", RECORD); });
    EXPECT_TRUE(kvp::QueueDefault("Office").empty());
    EXPECT_EQ(kvp::Queues()[0].strDriver, "KORVA Q2");
    ASSERT_TRUE(changer.Acts());
    EXPECT_EQ(kvp::QueueDefault("Office"), RECORD);
}

TEST_F(SpoolerStore, AFullDiskLeavesTheOldRecord)
{
    const Other writer([] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {40000, 40000}; // no file grows beyond that
        setrlimit(RLIMIT_FSIZE, &limit);
        kvp::SetQueueDefault("Office", Bytes(100000, 2));
    });
    kvp::AddQueue("Office", "KORVA Q1");
    kvp::SetQueueDefault("Office", RECORD);
    EXPECT_FALSE(writer.Acts());
    EXPECT_EQ(kvp::QueueDefault("Office"), RECORD);
}

TEST_F(SpoolerStore, WithoutARootTheStoreIsInMemoryAndEachMachinesOwn)
{
    kvp::Configure({});
    kvp::AddQueue("Office", "KORVA Q1");
    EXPECT_TRUE(kvp::QueueDefault("Office").empty());
    kvp::SetQueueDefault("Office", RECORD);
    EXPECT_EQ(kvp::QueueDefault("Office"), RECORD);
    kvp::Configure({});
    EXPECT_TRUE(kvp::Queues().empty());
    EXPECT_FALSE(fs::exists("/spool.db"));
}

} // namespace
