// Starting kvhost, and what it answered.
#include "tests/host/host_process.h"

#include <cstdlib>
#include <cstring>
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

Ran HostTest::Run(const std::string &line, const std::string &environment) const
{
    const std::string strCommand =
        "cd '" + strFolder +
        "' && exec env -i LSAN_OPTIONS=\"$LSAN_OPTIONS\" KV_LANG=en_US KV_MEASURE=0 KV_ACP=1252 "
        "KV_ROOT=\"$PWD/root\" " +
        environment + " '" KV_HOST_PATH "' " + line + " >stdout 2>stderr";
    const int nStatus = std::system(strCommand.c_str());
    return {WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1, Content("stdout"), Content("stderr")};
}

std::string HostTest::Done(const std::string &line) const
{
    const Ran ran = Run(line);
    EXPECT_EQ(ran.nStatus, 0) << ran.strErr;
    EXPECT_EQ(ran.strErr, "");
    return ran.strOut;
}

nlohmann::json HostTest::Asked(const std::string &line) const
{
    return nlohmann::json::parse(Done(line + " --json"));
}

void HostTest::AddPrinter(const std::string &name, const std::string &model) const
{
    Done("add-printer " + name + " --driver '" + model + "'");
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
