// Starting kvhost, and what it answered.
#include "tests/host/host_process.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
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

// A word of a shell's line that stands for this text.
static std::string Quoted(const std::string &text)
{
    std::string strQuoted = " '";
    for (const char c : text)
        strQuoted += c == '\'' ? "'\\''" : std::string(1, c);
    return strQuoted + "'";
}

Ran HostTest::Run(const std::vector<std::string> &args,
                  const std::vector<std::string> &environment) const
{
    std::string strLine = "exec env -i KV_LANG=en_US KV_MEASURE=0 KV_ACP=1252";
    strLine += Quoted("KV_ROOT=" + Path("root"));
    for (const std::string &variable : environment)
        strLine += Quoted(variable);
    strLine += Quoted(KV_HOST_PATH);
    for (const std::string &arg : args)
        strLine += Quoted(arg);
    strLine += " >" + Quoted(Path("stdout")) + " 2>" + Quoted(Path("stderr"));
    const int nStatus = std::system(strLine.c_str());
    return {WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1, Content("stdout"), Content("stderr")};
}

Ran HostTest::Done(const std::vector<std::string> &args) const
{
    const Ran ran = Run(args);
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
