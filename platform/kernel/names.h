// Names on the machine's drives. A Place is a name taken apart and made safe: nothing in it leads
// out of the root directory, so it can be appended to the root as it stands.
#ifndef KV_PLATFORM_KERNEL_NAMES_H
#define KV_PLATFORM_KERNEL_NAMES_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace kvp
{

// "c/winnt35/kv.dat" for "C:\winnt35\kv.dat": UTF-8, the drive in lower case, the rest in the case
// asked for, one '/' between. At least the drive, never a '/' at either end.
class Place
{
  public:
    Place() = default;
    Place(const Place &other) { *this = other; }
    // Copies what means something: the room behind it is large.
    Place &operator=(const Place &other)
    {
        if (this != &other)
            m_cb = other.View().copy(m_sz.data(), m_sz.size());
        return *this;
    }
    std::string_view View() const { return {m_sz.data(), m_cb}; }
    // Walks on from here by components that '\' or '/' separate. False when they lead above the
    // drive, hold what a name cannot hold, or are too long; the place is then of no use.
    bool Walk(std::string_view components);
    // One component as it stands on disk.
    bool AppendLeaf(std::string_view leaf);
    std::string_view Leaf() const;
    std::string_view Directory() const; // all but the leaf; empty for a drive
    bool SetDrive(char letter);
    bool SetView(std::string_view place);
    std::string DosPath() const; // "C:\winnt35\kv.dat"
    // The same into a buffer, in the ANSI code page; its length, or 0 when it does not fit.
    size_t DosPathAnsi(char *to, size_t room) const;

  private:
    bool WalkOne(std::string_view component);
    size_t PutDosPath(char *to) const; // at most two bytes more than the place has

    size_t m_cb = 0;
    // Only the first m_cb bytes mean anything; clearing the rest would cost on every open.
    std::array<char, 1024> m_sz;
};

// No drive, no directory: such a name is searched for.
bool IsBareName(std::string_view name);
// A DOS name in UTF-8 to its place; a relative one starts from the current directory C:\.
bool PlaceOf(std::string_view name, Place &place);

inline char FoldAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The small letter of a capital of any alphabet; anything else as it is.
char32_t LowerCase(char32_t letter);

bool IsAscii(std::string_view text);

// The form in which names are compared without regard to case, in a buffer of its own.
class FoldedName
{
  public:
    explicit FoldedName(std::string_view name);
    std::string_view View() const { return m_view; }

  private:
    std::array<char, 256> m_sz;
    std::string m_strLong;
    std::string_view m_view;
};

} // namespace kvp

#endif
