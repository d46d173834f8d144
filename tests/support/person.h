// A person before the screen: lines of a script, with looks at what they have led to in between.
#ifndef KV_TESTS_SUPPORT_PERSON_H
#define KV_TESTS_SUPPORT_PERSON_H

#include <deque>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include <nlohmann/json.hpp>

#include "platform/host.h"

class Person
{
  public:
    // A line of a script, or a look.
    using Step = std::variant<const char *, std::string, std::function<void()>>;

    Person() = default;
    ~Person() { kvp::SetInputSource(nullptr); }
    Person(const Person &) = delete;
    Person &operator=(const Person &) = delete;

    // What the person does from now on, in place of what was planned.
    void Will(std::vector<Step> steps);
    // Everything was done, and could be; else says what was not.
    void ExpectDone() const;

  private:
    std::deque<Step> aSteps;
};

// What the person sees: a control of the page or dialog on top, and the colour of a pixel in it.
HWND Shown(int id);
// The control as the action "dump" writes it: text, enabled, visible, checked, items, data,
// selection, position, picture, ... Null when there is none of this number.
nlohmann::json Seen(int id);
std::string SeenText(int id);               // UTF-8; of a list, its selected item
std::vector<std::string> SeenItems(int id); // UTF-8
COLORREF PixelOf(int id, int x, int y);
RECT ClientOf(int id);

#endif
