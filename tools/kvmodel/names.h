// The names that a source may use for numbers of the files.
#ifndef KVMODEL_NAMES_H
#define KVMODEL_NAMES_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kvm
{

struct Name {
    int64_t value;
    const char *lpszName;
};
using Names = std::span<const Name>;

std::optional<int64_t> ValueOf(Names names, std::string_view name);
const char *NameOf(Names names, int64_t value); // null when it has none
std::string ListOf(Names names);                // "a, b, c"

extern const Names PAPER_IDS, PAPER_DEFAULTS, SOURCE_IDS, COLLATE_RULES, AREA_RULES, SWITCH,
    DOT_SCALES, RESOLUTION_FLAGS, INKS, TOGGLE_RULES, OPTION_RULES, LOCK_RULES, HT_BITS,
    INTENT_BITS, SETTING_FLAGS, SETTING_FLAGS3, ORIENTATIONS, MODES, AREAS, PUBLIC_FIELDS,
    LANGUAGES;

} // namespace kvm

#endif
