// What every page and dialog keeps to, whatever it shows. Each check fails the test that makes it.
#ifndef KV_TESTS_RESOURCES_LAYOUT_H
#define KV_TESTS_RESOURCES_LAYOUT_H

#include <set>

#include "tests/resources/pages.h"

// Same controls, styles and places as in another language; one control may have its own width.
void ExpectSameLayout(const Page &shape, const Page &other, int idOwnWidth = 0);
// No text is larger than its control, measured as the layer draws it.
void ExpectTextsFit(const Page &shape);
// Each letter once; one more may be taken.
void ExpectLettersUnique(const Page &shape, char16_t taken = 0);
// A label's letter leads to what stands behind it.
void ExpectLabelsStandBeforeFields(const Page &shape);
// Controls lie on the page and not on each other; one may lie over others.
void ExpectNothingCovered(const Page &shape, int idOnTop = 0);

// Each group of radio buttons, as the group marks divide them.
std::vector<std::set<int>> RadioGroups(const Page &page);

#endif
