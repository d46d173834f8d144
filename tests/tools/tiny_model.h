// The smallest model that is good, as a source: three papers, one source, one media, one
// resolution.
#ifndef KV_TESTS_TOOLS_TINY_MODEL_H
#define KV_TESTS_TOOLS_TINY_MODEL_H

inline constexpr const char *TINY_MODEL = R"(user_settings = 3
user_papers = 4
source = [ { label = "feeder", id = "manual", collate = "on-locked", area = "centred" } ]
resolution_name = [ { label = "fine", text = 7 } ]
media = [ { label = "plain", code = 20 } ]
resolution = [
  { label = "plain-fine", media = "plain", name = "fine", dpi = [720, 360], dot_scale = "vertical", flags = ["option-on"] },
]
rule = [
  { resolution = "plain-fine", ink = "color", rule = 5, hs = "off", mw = "on-locked", option = "on", ht = [1, 3] },
  { resolution = "plain-fine", ink = "black", fd = "off-locked", mirror = "off-locked", intents = [0, 2] },
]
mw = [
  { dpi = [720, 360], scaled = [720, 720], source = "feeder", ink = "black", data = [1, -2] },
]

[[paper]]
id = "a4"
size = "210 x 297 mm"
default = "metric"

[[paper]]
id = "letter"
size = "8.5 x 11 in"
margins = [10, 20, 30, 40]
default = "inch"

[[paper]]
id = "user"
size = [2976, 4209]
smallest = "89 x 127 mm"
largest = "8 x 44 in"
preview = 2

[[automatic]]
label = "auto"
resolution = "plain-fine"
ink = "color"
level = 2
ht = 1
flags = ["mw", "hs"]

[[preset]]
resolution = "plain-fine"
ink = "black"
preset = 1
intent = 2
adjust = [1, -2, 3, 0, 0, -25]

[template]
source = "feeder"
setting = "auto"
max_print_width = "8 in"
model_tag = 0x4B560001

[printer]
id = 42
max_copies = 12
pairs = [[1, 2], [3, 65535]]
)";

#endif
