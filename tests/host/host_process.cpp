#include "tests/host/host_process.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <sys/wait.h>

namespace fs = std::filesystem;

HostTest::HostTest()
{
    std::string strPattern = (fs::temp_directory_path() / "kvhosttest.XXXXXX").string();
    if (!mkdtemp(strPattern.data()))
        std::abort();
    strFolder = strPattern;
    fs::copy(KV_SAMPLE_ROOT, Path("root"), fs::copy_options::recursive);
}

HostTest::~HostTest()
{
    std::error_code ignored;
    fs::remove_all(strFolder, ignored);
}

static std::vector<char *> Pointers(std::vector<std::string> &texts)
{
    std::vector<char *> pointers;
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

Ran HostTest::Run(std::vector<std::string> args, std::vector<std::string> environment) const
{
    args.insert(args.begin(), KV_HOST_PATH);
    // What was given comes first: of a name that is there twice the first counts.
    environment.insert(environment.end(),
                       {"KV_ROOT=" + Path("root"), "KV_LANG=en_US", "KV_MEASURE=0", "KV_ACP=1252"});
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const int nFlags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, 1, Path("stdout").c_str(), nFlags, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, Path("stderr").c_str(), nFlags, 0600);
    pid_t nProcess = 0;
    int nStatus = 0;
    const int nError = posix_spawn(&nProcess, KV_HOST_PATH, &actions, nullptr,
                                   Pointers(args).data(), Pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (nError != 0 || waitpid(nProcess, &nStatus, 0) != nProcess)
        std::abort();
    return {WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1, Content("stdout"), Content("stderr")};
}

Ran HostTest::Done(std::vector<std::string> args) const
{
    const Ran ran = Run(std::move(args));
    EXPECT_EQ(ran.nStatus, 0) << ran.strErr;
    EXPECT_EQ(ran.strErr, "");
    return ran;
}

nlohmann::json HostTest::Settings(const std::string &printer, const std::string &in) const
{
    std::vector<std::string> args = {"settings", "-p", printer, "--no-prompt", "--json"};
    if (!in.empty())
        args.insert(args.end(), {"--in", in});
    return Done(args).Json();
}

void HostTest::Write(const std::string &name, const std::string &content) const
{
    std::ofstream(Path(name), std::ios::binary | std::ios::trunc) << content;
}

void HostTest::WriteRecord(const std::string &name, const DriverDevMode &record) const
{
    Write(name, std::string(reinterpret_cast<const char *>(&record), sizeof record));
}

std::string HostTest::Content(const std::string &name) const
{
    std::ifstream in(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

DriverDevMode HostTest::Record(const std::string &name) const
{
    const std::string strContent = Content(name);
    EXPECT_EQ(strContent.size(), sizeof(DriverDevMode));
    DriverDevMode record{};
    std::memcpy(&record, strContent.data(), std::min(strContent.size(), sizeof record));
    return record;
}

bool HostTest::Exists(const std::string &name) const
{
    return fs::exists(Path(name));
}
