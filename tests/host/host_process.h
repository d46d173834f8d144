// kvhost run as a process of its own, on a root of its own with the sample printers on it.
#ifndef KV_TESTS_HOST_HOST_PROCESS_H
#define KV_TESTS_HOST_HOST_PROCESS_H

#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "kvui/devmode.h"

struct Ran {
    int nStatus; // -1 when it did not exit by itself
    std::string strOut, strErr;
};

class HostTest : public ::testing::Test
{
  protected:
    HostTest();
    ~HostTest() override;
    HostTest(const HostTest &) = delete;
    HostTest &operator=(const HostTest &) = delete;

    // A shell's words behind "kvhost", run in the folder: in English, metric, with nothing of the
    // environment but what is given ("KV_LANG=ja_JP").
    Ran Run(const std::string &line, const std::string &environment = {}) const;
    // As Run, and it has to end well; its output.
    std::string Done(const std::string &line) const;
    // The same with --json.
    nlohmann::json Asked(const std::string &line) const;
    // A printer of the large model, or of another.
    void AddPrinter(const std::string &name, const std::string &model = "KORVA KJ-820 Pro") const;

    std::string Path(const std::string &name) const { return strFolder + "/" + name; }
    bool Exists(const std::string &name) const { return std::filesystem::exists(Path(name)); }
    void Write(const std::string &name, const std::string &content) const;
    std::string Content(const std::string &name) const;
    DriverDevMode Record(const std::string &name) const;

    std::string strFolder; // removed afterwards; the root is "root" in it
};

#endif
