// The tables of names.
#include "tools/kvmodel/names.h"

#include "kvui/devmode.h"

namespace kvm
{

std::optional<int64_t> ValueOf(Names names, std::string_view name)
{
    for (const Name &row : names)
        if (name == row.lpszName)
            return row.value;
    return std::nullopt;
}

const char *NameOf(Names names, int64_t value)
{
    for (const Name &row : names)
        if (row.value == value)
            return row.lpszName;
    return nullptr;
}

std::string ListOf(Names names)
{
    std::string list;
    for (const Name &row : names)
        list += (list.empty() ? "" : ", ") + std::string(row.lpszName);
    return list;
}

namespace
{

constexpr Name aPaperIds[] = {{1, "letter"},       {3, "tabloid"},
                              {4, "ledger"},       {5, "legal"},
                              {6, "half-letter"},  {7, "executive"},
                              {8, "a3"},           {9, "a4"},
                              {11, "a5"},          {12, "b4"},
                              {13, "b5"},          {14, "folio"},
                              {15, "quarto"},      {17, "11x17"},
                              {19, "envelope-9"},  {20, "envelope-10"},
                              {27, "envelope-dl"}, {28, "envelope-c5"},
                              {30, "envelope-c4"}, {31, "envelope-c6"},
                              {34, "envelope-b5"}, {35, "envelope-b6"},
                              {37, "monarch"},     {39, "fanfold-us"},
                              {43, "postcard"},    {KV_PAPER_USER, "user"}};
constexpr Name aPaperDefaults[] = {{0, "none"}, {1, "metric"}, {2, "inch"}};
constexpr Name aSourceIds[] = {{1, "upper"},  {2, "lower"},           {3, "middle"},
                               {4, "manual"}, {5, "envelope"},        {6, "envelope-manual"},
                               {7, "auto"},   {8, "tractor"},         {9, "small"},
                               {10, "large"}, {11, "large-capacity"}, {14, "cassette"}};
constexpr Name aCollateRules[] = {
    {0, "user"}, {1, "on"}, {2, "off"}, {3, "on-locked"}, {4, "off-locked"}};
constexpr Name aAreaRules[] = {
    {0, "user"}, {1, "centred"}, {2, "maximum"}, {3, "centred-locked"}, {4, "maximum-locked"}};
constexpr Name aSwitch[] = {{0, "off"}, {1, "on"}};
constexpr Name aDotScales[] = {{0, "none"}, {1, "horizontal"}, {2, "vertical"}, {3, "both"}};
constexpr Name aResolutionFlags[] = {{0x1, "hs-on"},
                                     {0x2, "hs-off"},
                                     {0x10, "option-on"},
                                     {0x20, "option-off"},
                                     {0x100, "summary-mw"}};
constexpr Name aInks[] = {{0, "black"}, {1, "color"}};
constexpr Name aToggleRules[] = {
    {0, "user"}, {1, "on-locked"}, {2, "off-locked"}, {3, "off"}, {4, "on"}};
constexpr Name aOptionRules[] = {{0, "user"},      {1, "on-locked"},  {2, "off-locked"},
                                 {3, "on-hidden"}, {4, "off-hidden"}, {5, "off"},
                                 {6, "on"}};
constexpr Name aLockRules[] = {{0, "user"}, {1, "on-locked"}, {2, "off-locked"}};
// The file's bits are not in the order of the choices.
constexpr Name aHTBits[] = {{8, "0"}, {2, "1"}, {4, "2"}, {1, "3"}};
constexpr Name aIntentBits[] = {{1, "0"}, {2, "1"}, {4, "2"}, {8, "3"}};
constexpr Name aSettingFlags[] = {
    {KV_FLAG_MW, "mw"}, {KV_FLAG_OPT, "option"}, {KV_FLAG_HS, "hs"}, {KV_FLAG_MIRROR, "mirror"}};
constexpr Name aSettingFlags3[] = {{1, "krjnl"}};
constexpr Name aOrientations[] = {{1, "portrait"}, {2, "landscape"}};
constexpr Name aModes[] = {{0, "advanced"}, {1, "automatic"}};
constexpr Name aAreas[] = {{1, "maximum"}, {2, "centred"}};
constexpr Name aPublicFields[] = {{KV_DM_ORIENTATION, "orientation"},
                                  {KV_DM_PAPERSIZE, "paper-size"},
                                  {KV_DM_PAPERLENGTH, "paper-length"},
                                  {KV_DM_PAPERWIDTH, "paper-width"},
                                  {0x10, "scale"},
                                  {KV_DM_COPIES, "copies"},
                                  {KV_DM_DEFAULTSOURCE, "source"},
                                  {0x400, "print-quality"},
                                  {0x800, "color"},
                                  {0x1000, "duplex"},
                                  {0x2000, "y-resolution"},
                                  {0x4000, "tt-option"},
                                  {0x8000, "collate"}};
constexpr Name aLanguages[] = {
    {0x04, "chinese"},    {0x05, "czech"},     {0x06, "danish"},    {0x07, "german"},
    {0x08, "greek"},      {0x09, "english"},   {0x0A, "spanish"},   {0x0B, "finnish"},
    {0x0C, "french"},     {0x0E, "hungarian"}, {0x10, "italian"},   {0x11, "japanese"},
    {0x12, "korean"},     {0x13, "dutch"},     {0x14, "norwegian"}, {0x15, "polish"},
    {0x16, "portuguese"}, {0x19, "russian"},   {0x1D, "swedish"},   {0x1F, "turkish"}};

} // namespace

const Names PAPER_IDS = aPaperIds;
const Names PAPER_DEFAULTS = aPaperDefaults;
const Names SOURCE_IDS = aSourceIds;
const Names COLLATE_RULES = aCollateRules;
const Names AREA_RULES = aAreaRules;
const Names SWITCH = aSwitch;
const Names DOT_SCALES = aDotScales;
const Names RESOLUTION_FLAGS = aResolutionFlags;
const Names INKS = aInks;
const Names TOGGLE_RULES = aToggleRules;
const Names OPTION_RULES = aOptionRules;
const Names LOCK_RULES = aLockRules;
const Names HT_BITS = aHTBits;
const Names INTENT_BITS = aIntentBits;
const Names SETTING_FLAGS = aSettingFlags;
const Names SETTING_FLAGS3 = aSettingFlags3;
const Names ORIENTATIONS = aOrientations;
const Names MODES = aModes;
const Names AREAS = aAreas;
const Names PUBLIC_FIELDS = aPublicFields;
const Names LANGUAGES = aLanguages;

} // namespace kvm
