// One character at a time from and to UTF-8.
#ifndef KV_PLATFORM_KERNEL_UTF8_H
#define KV_PLATFORM_KERNEL_UTF8_H

#include <string>
#include <string_view>

namespace kvp
{

constexpr char32_t REPLACEMENT_CHARACTER = 0xFFFD;

// Takes the first character off a text that is not empty. A byte that begins no valid sequence is
// taken alone and gives the replacement character.
char32_t TakeUtf8(std::string_view &text);
void PutUtf8(std::string &text, char32_t c); // a surrogate becomes the replacement character

} // namespace kvp

#endif
