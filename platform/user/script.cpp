// Where inputs come from when a script or a test plays the person: lines become actions, actions
// become inputs, one at a time, each only after everything has been painted.
#include "platform/user/script.h"

#include <deque>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "platform/display/display.h"
#include "platform/host.h"
#include "platform/user/transcript.h"

namespace kvp
{

using Source = std::function<std::optional<std::string>()>;

namespace
{
struct Player {
    Source source;
    std::optional<std::string> peeked;
    std::deque<std::function<void()>> steps; // of the action under way
    std::deque<std::function<void()>> added; // by the step under way; they come before the others
    std::deque<Input> inputs;
    Play play{};
    std::string shots;
};
} // namespace

static Player &ThePlayer()
{
    static Player player;
    return player;
}

void QueueInput(const Input &input)
{
    ThePlayer().added.push_back([input] { ThePlayer().inputs.push_back(input); });
}

void QueueStep(void (*step)(const std::vector<Word> &), const std::vector<Word> &words)
{
    ThePlayer().added.push_back([step, words] { step(words); });
}

const std::string &ShotsFolder()
{
    return ThePlayer().shots;
}

static std::optional<std::string> NextLine()
{
    Player &player = ThePlayer();
    if (player.peeked)
        return std::exchange(player.peeked, std::nullopt);
    if (!player.source || player.play.bFailed)
        return std::nullopt;
    // The source may replace itself while it runs.
    const Source source = player.source;
    auto line = source();
    if (line)
        ++player.play.nLine;
    return line;
}

void FailPlay(const std::string &why)
{
    Player &player = ThePlayer();
    player.steps.clear();
    player.added.clear();
    player.inputs.clear();
    if (player.play.bFailed)
        return;
    player.play.bFailed = true;
    player.play.strWhy = why;
    fmt::print(stderr, "{}\n", why);
    NoteEvent({{"event", "result"}, {"failed", true}, {"line", player.play.nLine}, {"why", why}});
}

// An action of nothing but blanks and a comment does nothing.
static void Begin(const std::string &line)
{
    const std::vector<Word> words = SplitWords(line);
    if (words.empty())
        return;
    NoteEvent({{"event", "action"}, {"line", ThePlayer().play.nLine}, {"text", line}});
    StartAction(words);
}

static void TakeAdded()
{
    Player &player = ThePlayer();
    player.steps.insert(player.steps.begin(), player.added.begin(), player.added.end());
    player.added.clear();
}

// One step, which may lead to an input. False when there is nothing left to do.
static bool PlayOn()
{
    Player &player = ThePlayer();
    try {
        if (!player.steps.empty()) {
            const auto step = player.steps.front();
            player.steps.pop_front();
            step();
            TakeAdded();
            return true;
        }
        const auto line = NextLine();
        if (line)
            Begin(*line);
        TakeAdded();
        return line.has_value();
    } catch (const ActionError &e) {
        FailPlay(fmt::format("script line {}: {}", player.play.nLine, e.why));
        return false;
    }
}

// Within an action, whatever follows an input waits until that has been carried out and painted.
bool NextInput(Input &input)
{
    Player &player = ThePlayer();
    input = {};
    if (player.inputs.empty() && !PlayOn())
        return !player.play.bFailed && BackendInput(input);
    if (!player.inputs.empty()) {
        input = player.inputs.front();
        player.inputs.pop_front();
    }
    return true;
}

bool CanAnswerBoxes()
{
    Player &player = ThePlayer();
    if (player.play.bFailed)
        return false;
    if (HasPerson())
        return true;
    if (!player.source)
        return false;
    if (ActiveWindow())
        return true;
    // At start-up only a script that expects the box can answer it.
    if (!player.peeked)
        player.peeked = NextLine();
    if (!player.peeked)
        return false;
    try {
        const std::vector<Word> words = SplitWords(*player.peeked);
        return !words.empty() && words[0].text == "box";
    } catch (const ActionError &) {
        return false;
    }
}

static Source LinesOf(const std::string &hostPath)
{
    const auto file = std::make_shared<std::ifstream>(hostPath);
    if (!*file)
        throw std::runtime_error(
            fmt::format("cannot read the script {}: name a file that exists", hostPath));
    return [file]() -> std::optional<std::string> {
        std::string line;
        if (!std::getline(*file, line))
            return std::nullopt;
        if (line.ends_with('\r'))
            line.pop_back();
        return line;
    };
}

void OpenScript(const std::string &hostPath, const std::string &shots)
{
    SetInputSource(hostPath.empty() ? nullptr : LinesOf(hostPath));
    ThePlayer().shots = shots;
}

void SetInputSource(Source source)
{
    Player fresh;
    fresh.shots = ThePlayer().shots;
    fresh.source = std::move(source);
    ThePlayer() = std::move(fresh);
}

Play CurrentPlay()
{
    return ThePlayer().play;
}

static bool DoesNothing(const std::string &line)
{
    try {
        return SplitWords(line).empty();
    } catch (const ActionError &) {
        return false;
    }
}

Play EndPlay()
{
    Player &player = ThePlayer();
    while (!player.play.bFailed) {
        const auto line = NextLine();
        if (!line)
            break;
        if (!DoesNothing(*line))
            FailPlay(fmt::format("script line {}: no window is open any longer for this action",
                                 player.play.nLine));
    }
    return player.play;
}

} // namespace kvp
