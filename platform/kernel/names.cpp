// Taking DOS names apart, and comparing them without regard to case.
#include "platform/kernel/names.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

#include "platform/kernel/internal.h"
#include "platform/kernel/utf8.h"

namespace kvp
{
namespace
{

constexpr size_t LONGEST_COMPONENT = 255; // what the host's file systems take

bool IsSeparator(char c)
{
    return c == '\\' || c == '/';
}

bool IsForbidden(char c)
{
    switch (c) {
    case '<':
    case '>':
    case ':':
    case '"':
    case '|':
    case '?':
    case '*': return true;
    default: return static_cast<unsigned char>(c) < 0x20;
    }
}

// Blanks and dots at a component's end do not count.
std::string_view WithoutTail(std::string_view component)
{
    while (!component.empty() && (component.back() == '.' || component.back() == ' '))
        component.remove_suffix(1);
    return component;
}

std::string FoldWide(std::string_view name)
{
    std::string strFolded;
    while (!name.empty())
        PutUtf8(strFolded, LowerCase(TakeUtf8(name)));
    return strFolded;
}

} // namespace

// Beyond ASCII by the C library's table of letters, which needs no locale to be installed.
char32_t LowerCase(char32_t letter)
{
    static const locale_t table = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (letter < 0x80)
        return static_cast<unsigned char>(FoldAscii(static_cast<char>(letter)));
    return table ? static_cast<char32_t>(towlower_l(static_cast<wint_t>(letter), table)) : letter;
}

bool IsAscii(std::string_view text)
{
    unsigned char uAll = 0;
    for (const char c : text)
        uAll |= static_cast<unsigned char>(c);
    return uAll < 0x80;
}

bool Place::SetDrive(char letter)
{
    const char c = FoldAscii(letter);
    if (c < 'a' || c > 'z')
        return false;
    m_sz[0] = c;
    m_cb = 1;
    return true;
}

bool Place::SetView(std::string_view place)
{
    if (place.empty() || place.size() > m_sz.size())
        return false;
    m_cb = place.copy(m_sz.data(), m_sz.size());
    return true;
}

bool Place::AppendLeaf(std::string_view leaf)
{
    if (leaf.empty() || m_cb + 1 + leaf.size() > m_sz.size())
        return false;
    m_sz[m_cb++] = '/';
    m_cb += leaf.copy(m_sz.data() + m_cb, leaf.size());
    return true;
}

std::string_view Place::Directory() const
{
    const size_t iSlash = View().rfind('/');
    return iSlash == std::string_view::npos ? std::string_view() : View().substr(0, iSlash);
}

std::string_view Place::Leaf() const
{
    return View().substr(View().rfind('/') + 1); // npos + 1 is 0: a drive is its own leaf
}

bool Place::WalkOne(std::string_view component)
{
    if (component.empty() || component == ".")
        return true;
    if (component == "..") {
        m_cb = Directory().size();
        return m_cb != 0;
    }
    const std::string_view kept = WithoutTail(component);
    return std::none_of(kept.begin(), kept.end(), IsForbidden) &&
           kept.size() <= LONGEST_COMPONENT && AppendLeaf(kept);
}

bool Place::Walk(std::string_view components)
{
    size_t iStart = 0;
    for (size_t i = 0; i <= components.size(); ++i) {
        if (i < components.size() && !IsSeparator(components[i]))
            continue;
        if (!WalkOne(components.substr(iStart, i - iStart)))
            return false;
        iStart = i + 1;
    }
    return true;
}

size_t Place::PutDosPath(char *to) const
{
    to[0] = static_cast<char>(m_sz[0] - 'a' + 'A');
    to[1] = ':';
    to[2] = '\\';
    for (size_t i = 1; i < m_cb; ++i)
        to[i + 1] = m_sz[i] == '/' ? '\\' : m_sz[i];
    return m_cb == 1 ? 3 : m_cb + 1;
}

std::string Place::DosPath() const
{
    std::string strPath(m_cb + 2, '\0');
    strPath.resize(PutDosPath(strPath.data()));
    return strPath;
}

size_t Place::DosPathAnsi(char *to, size_t room) const
{
    if (IsAscii(View()))
        return m_cb + 2 <= room ? PutDosPath(to) : 0;
    const std::string strAnsi = WideToAnsi(ToWide(DosPath()));
    return strAnsi.size() <= room ? strAnsi.copy(to, room) : 0;
}

bool IsBareName(std::string_view name)
{
    return std::none_of(name.begin(), name.end(),
                        [](char c) { return IsSeparator(c) || c == ':'; });
}

bool PlaceOf(std::string_view name, Place &place)
{
    if (name.empty())
        return false;
    if (name.size() >= 2 && name[1] == ':')
        return place.SetDrive(name[0]) && place.Walk(name.substr(2));
    // Two separators in front name another machine, and none is reachable.
    if (name.size() >= 2 && IsSeparator(name[0]) && IsSeparator(name[1]))
        return false;
    return place.SetDrive('C') && place.Walk(name);
}

FoldedName::FoldedName(std::string_view name)
{
    if (name.size() > m_sz.size() || !IsAscii(name)) {
        m_strLong = FoldWide(name);
        m_view = m_strLong;
        return;
    }
    for (size_t i = 0; i < name.size(); ++i)
        m_sz[i] = FoldAscii(name[i]);
    m_view = {m_sz.data(), name.size()};
}

} // namespace kvp
