// How a command ends other than well: an exit status and one line for standard error.
#ifndef KV_HOST_FAILURE_H
#define KV_HOST_FAILURE_H

#include <stdexcept>
#include <string>

enum ExitStatus {
    EXIT_DONE = 0,
    EXIT_REFUSED = 1, // the driver or the spooler refused or failed
    EXIT_USAGE = 2,
    EXIT_CANCELLED = 3,
    EXIT_SCRIPT = 4, // the script could not be carried out, or left a window open
};

struct Failure : std::runtime_error {
    Failure(int status, const std::string &line) : std::runtime_error(line), nStatus(status) {}
    int nStatus;
};

#endif
