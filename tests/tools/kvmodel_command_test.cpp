// The command as a packager runs it: exit status, what is said, what is written.
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "tests/tools/tiny_model.h"

namespace
{

namespace fs = std::filesystem;

class Command : public ::testing::Test
{
  protected:
    Command()
    {
        std::string pattern = (fs::temp_directory_path() / "kvmodel.XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            std::abort();
        folder = pattern;
    }
    ~Command() override { fs::remove_all(folder); }
    void Write(const std::string &name, const std::string &text)
    {
        std::ofstream(folder / name, std::ios::binary) << text;
    }
    std::string Read(const std::string &name)
    {
        std::ifstream stream(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    // The exit status; what was said is in out and err.
    int Run(const std::string &arguments)
    {
        const std::string line =
            "cd '" + folder.string() + "' && '" KV_KVMODEL "' " + arguments + " >out 2>err";
        const int status = std::system(line.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    fs::path folder;
};

TEST_F(Command, CompilesPrintsAndCompilesAgain)
{
    Write("m.toml", TINY_MODEL);
    ASSERT_EQ(Run("compile m.toml -o made/deep"), 0) << Read("err");
    const std::string dat = Read("made/deep/m.dat"), cfg = Read("made/deep/m.cfg");
    EXPECT_EQ(dat.size(), 928u);
    ASSERT_EQ(Run("print made/deep/m.dat made/deep/m.cfg"), 0);
    Write("again.toml", Read("out"));
    ASSERT_EQ(Run("compile again.toml -o . --name other"), 0) << Read("err");
    EXPECT_EQ(Read("other.dat"), dat);
    EXPECT_EQ(Read("other.cfg"), cfg);
}

TEST_F(Command, ABadSourceWritesNothingAndSaysWhere)
{
    std::string source = TINY_MODEL;
    source.replace(source.find("max_copies = 12"), 15, "max_copies = 0");
    Write("bad.toml", source);
    EXPECT_EQ(Run("compile bad.toml -o made"), 1);
    EXPECT_EQ(Read("err"), "bad.toml:58: printer.max_copies: is 0; must be 1 to 99\n");
    EXPECT_FALSE(fs::exists(folder / "made"));
    Write("m.toml", TINY_MODEL);
    fs::create_directories(folder / "m.cfg.new" / "in the way");
    EXPECT_EQ(Run("compile m.toml -o ."), 1);
    EXPECT_EQ(Read("err"), "./m.cfg: cannot be written\n");
    EXPECT_FALSE(fs::exists(folder / "m.dat")) << "one of the two";
    Write("table.toml", "[[section]]\nlanguage = 9\n");
    EXPECT_EQ(Run("table table.toml -o kv_model.dat"), 1);
    EXPECT_TRUE(Read("err").starts_with("table.toml:1: section: ")) << Read("err");
    EXPECT_FALSE(fs::exists(folder / "kv_model.dat"));
}

TEST_F(Command, FilesThatCannotBeHadAreErrors)
{
    Write("m.toml", TINY_MODEL);
    Write("short.dat", "short");
    for (const char *arguments :
         {"compile none.toml -o .", "compile . -o .", "compile m.toml -o m.toml",
          "print none.dat none.cfg", "print short.dat none.cfg", "print-table short.dat",
          "table none.toml -o t.dat"}) {
        SCOPED_TRACE(arguments);
        EXPECT_EQ(Run(arguments), 1);
        EXPECT_FALSE(Read("err").empty());
        EXPECT_EQ(Read("out"), "");
    }
    ASSERT_EQ(Run("compile m.toml -o ."), 0);
    EXPECT_EQ(Run("print m.dat short.dat"), 1);
    EXPECT_EQ(Read("err"), "short.dat: header of the .cfg: cut short: 10 bytes wanted from offset "
                           "0, the file has 5\n");
}

TEST_F(Command, WrongUsageIsStatus2)
{
    for (const char *arguments : {"", "compile", "compile m.toml", "no-such-command", "print a"}) {
        SCOPED_TRACE(arguments);
        EXPECT_EQ(Run(arguments), 2);
    }
    EXPECT_EQ(Run("--help"), 0);
}

} // namespace
