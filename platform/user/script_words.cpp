// The words of a script's line, and the names of keys.
#include <algorithm>

#include "platform/host.h"
#include "platform/kernel/names.h"
#include "platform/user/script.h"

namespace kvp
{

static std::string Quoted(std::string_view line, size_t &at)
{
    std::string text;
    for (++at; at < line.size(); ++at) {
        if (line[at] != '"') {
            text += line[at];
        } else if (at + 1 < line.size() && line[at + 1] == '"') {
            text += line[at++];
        } else {
            ++at;
            return text;
        }
    }
    throw ActionError{"a text lacks its closing quote"};
}

// `choose 5040 #3` and `scroll 5040 #3` count items; anywhere else a # begins a comment.
static bool IsItemNumber(const std::vector<Word> &words, std::string_view behind)
{
    return words.size() == 2 && (words[0].text == "choose" || words[0].text == "scroll") &&
           !behind.empty() && behind[0] >= '0' && behind[0] <= '9';
}

std::vector<Word> SplitWords(std::string_view line)
{
    std::vector<Word> words;
    size_t at = line.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    while (at < line.size()) {
        if (line[at] == ' ' || line[at] == '\t') {
            ++at;
        } else if (line[at] == '"') {
            words.push_back({Quoted(line, at), true});
        } else if (line[at] == '#' && !IsItemNumber(words, line.substr(at + 1))) {
            break; // a comment
        } else {
            const size_t end = std::min(line.find_first_of(" \t\"", at), line.size());
            words.push_back({std::string(line.substr(at, end - at)), false});
            at = end;
        }
    }
    return words;
}

static bool TakePrefix(std::string_view &name, std::string_view prefix)
{
    if (name.size() <= prefix.size() || !name.starts_with(prefix))
        return false;
    name.remove_prefix(prefix.size());
    return true;
}

Key ParseKey(const std::string &name)
{
    static constexpr struct {
        const char *name;
        KeyCode code;
    } aKeys[] = {
        {"Enter", KeyCode::Enter},   {"Escape", KeyCode::Escape},       {"Tab", KeyCode::Tab},
        {"Space", KeyCode::Space},   {"Backspace", KeyCode::Backspace}, {"Delete", KeyCode::Delete},
        {"Up", KeyCode::Up},         {"Down", KeyCode::Down},           {"Left", KeyCode::Left},
        {"Right", KeyCode::Right},   {"Home", KeyCode::Home},           {"End", KeyCode::End},
        {"PageUp", KeyCode::PageUp}, {"PageDown", KeyCode::PageDown},   {"F1", KeyCode::F1},
        {"F4", KeyCode::F4},
    };
    Key key;
    std::string_view rest = name;
    for (bool more = true; more;) {
        more = TakePrefix(rest, "Shift+")  ? (key.shift = true)
               : TakePrefix(rest, "Ctrl+") ? (key.ctrl = true)
                                           : TakePrefix(rest, "Alt+") && (key.alt = true);
    }
    for (const auto &row : aKeys)
        if (rest == row.name) {
            key.code = row.code;
            return key;
        }
    const std::u16string letter = ToWide(rest);
    if (letter.size() != 1)
        throw ActionError{"there is no key \"" + name + "\""};
    key.code = KeyCode::Letter;
    key.letter = key.shift || (!key.ctrl && !key.alt) ? letter[0] : LowerCase(letter[0]);
    return key;
}

} // namespace kvp
