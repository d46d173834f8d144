// Pages and dialogs as they are stored: each language's template read from the driver's resources
// or a model's library.
#ifndef KV_TESTS_RESOURCES_PAGES_H
#define KV_TESTS_RESOURCES_PAGES_H

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/user/template.h"
#include "resources/main_ids.h"
#include "resources/paper_ids.h"
#include "resources/styles.h"
#include "resources/utility_ids.h"

constexpr LANGID ENGLISH = 0x409;
constexpr LANGID aLanguages[] = {0x407, 0x409, 0x40A, 0x40C, 0x410, 0x416, 0x807, 0x80A,
                                 0x80C, 0x810, 0x816, 0xC07, 0xC0A, 0xC0C, 0x100C};

using Item = kvp::TemplateItem;
using Page = kvp::DialogTemplate;

// Where a template lies in the driver's resources; languages that share one have the same place.
const void *PlaceOf(int page, LANGID language);
// A test failure and an empty page when missing or damaged.
Page PageIn(int page, LANGID language, const char *library = KV_DRIVER_RESOURCES);

const Item &ItemOf(const Page &page, int id);
bool IsRadio(const Item &item);
bool IsGroupBox(const Item &item);
char16_t LetterOf(const Item &item); // its mnemonic in upper case, or 0
std::string Name(const Item &item);  // for messages

#endif
