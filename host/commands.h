// The commands, one function each: what was asked for in, the exit status out. They print their
// answer on standard output and throw a Failure, or what the layer throws, when there is none.
#ifndef KV_HOST_COMMANDS_H
#define KV_HOST_COMMANDS_H

#include <cstdint>
#include <string>
#include <vector>

// What the command line said; each command uses its own part of it.
struct Request {
    std::string strPrinter;
    std::string strModel;      // add-printer
    std::string strIn, strOut; // record files; empty: none
    bool bJson = false;
    bool bNoPrompt = false, bAdvanced = false;
    bool bClear = false;               // default
    std::vector<std::string> aQueries; // caps
    std::string strAction, strItem;    // item
    std::vector<std::int64_t> aValues; // item set
    std::string strFile;               // show
};

int AddPrinter(const Request &request);
int RemovePrinter(const Request &request);
int ListPrinters(const Request &request);
int ShowSettings(const Request &request);
int ShowCapabilities(const Request &request);
int WorkOnItem(const Request &request);
int WorkOnDefault(const Request &request);
int ShowProperties(const Request &request);
int ShowFile(const Request &request);

#endif
