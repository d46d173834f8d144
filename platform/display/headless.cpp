// The back end without a person: pictures are made when somebody asks for one, and no input comes.
#include "platform/display/display.h"

namespace kvp
{

static std::string clipboard;

const Backend headlessBackend{
    .name = "headless",
    .open = [](int, std::string &) { return true; },
    .present = [](Surface &) {},
    .nextInput = [](Input &) { return false; },
    .setClipboard = [](const std::string &utf8) { clipboard = utf8; },
    .getClipboard = [] { return clipboard; },
    .close = [] { clipboard.clear(); },
};

} // namespace kvp
