// Somebody who does anything that can be done on the sheet: presses, chooses, types and slides what
// is enabled on the page or dialog on top, as chance has it, and leaves at last.
#ifndef KV_TESTS_SUPPORT_WANDERER_H
#define KV_TESTS_SUPPORT_WANDERER_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include <nlohmann/json.hpp>

class Wanderer
{
  public:
    // A number below its argument, which is not 0.
    using Chance = std::function<uint32_t(uint32_t)>;

    // Does so many things, then closes what is open and leaves the sheet by "ok" or "cancel".
    Wanderer(Chance chance, int nActions, std::string strLeaveBy);
    // The next line of his script; nothing once he has left.
    std::optional<std::string> Next();

  private:
    std::string Act(const nlohmann::json &window);
    std::string OnControl(const nlohmann::json &control);
    std::string OnList(const nlohmann::json &control);
    std::string Leave(const nlohmann::json &window) const;

    Chance Pick;
    int nActionsLeft;
    std::string strLeaveBy;
};

#endif
