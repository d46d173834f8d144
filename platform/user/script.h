// The person played by a script: one action a line, carried out as keys and clicks.
#ifndef KV_PLATFORM_USER_SCRIPT_H
#define KV_PLATFORM_USER_SCRIPT_H

#include <string>
#include <string_view>
#include <vector>

#include "platform/user/input.h"
#include "platform/user/window.h"

namespace kvp
{

// Opens a script (empty: none) and says where its pictures go. Throws std::runtime_error when it
// cannot be read.
void OpenScript(const std::string &hostPath, const std::string &shots);
// The next input: from the actions that are under way, from the script, or from the back end.
// False when none will come.
bool NextInput(Input &input);
// Whether a message box would find somebody to answer it.
bool CanAnswerBoxes();
// The play has failed for this reason; the first one counts.
void FailPlay(const std::string &why);

// ---- within the player ------------------------------------------------------------------------

// Thrown by an action that cannot be carried out.
struct ActionError {
    std::string why;
};
struct Word {
    std::string text;
    bool quoted;
};
// The words of a line; a # outside quotes begins a comment.
std::vector<Word> SplitWords(std::string_view line);
// "Shift+Tab", "Alt+M", "F1", "x".
Key ParseKey(const std::string &name);

// Hands over what an action consists of: inputs, and steps that look at what they led to.
void QueueInput(const Input &input);
void QueueStep(void (*step)(const std::vector<Word> &words), const std::vector<Word> &words);
// Carries out an action's first step.
void StartAction(const std::vector<Word> &words);
const std::string &ShotsFolder();

} // namespace kvp

#endif
