// kvhost run as a process of its own, on a root of its own with the sample printers on it.
#ifndef KV_TESTS_HOST_HOST_PROCESS_H
#define KV_TESTS_HOST_HOST_PROCESS_H

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "kvui/devmode.h"

struct Ran {
    int nStatus; // -1 when it did not exit by itself
    std::string strOut, strErr;
    nlohmann::json Json() const { return nlohmann::json::parse(strOut); }
};

constexpr const char *SMALL = "KORVA KJ-150";
constexpr const char *LARGE = "KORVA KJ-820 Pro";

class HostTest : public ::testing::Test
{
  protected:
    HostTest();
    ~HostTest() override;
    HostTest(const HostTest &) = delete;
    HostTest &operator=(const HostTest &) = delete;

    // In English, metric, with nothing of the environment but what is given ("KV_LANG=ja_JP").
    Ran Run(const std::vector<std::string> &args,
            const std::vector<std::string> &environment = {}) const;
    // As Run, and it has to end well.
    Ran Done(const std::vector<std::string> &args) const;
    nlohmann::json Settings(const std::string &printer, const std::string &in = {}) const;

    std::string Path(const std::string &name) const { return strFolder + "/" + name; }
    void Write(const std::string &name, const std::string &content) const;
    std::string Content(const std::string &name) const;
    DriverDevMode Record(const std::string &name) const;

    std::string strFolder; // removed afterwards; the root is "root" in it
};

#endif
