// Ownership of a file descriptor of the host.
#ifndef KV_PLATFORM_KERNEL_FD_H
#define KV_PLATFORM_KERNEL_FD_H

#include <unistd.h>

#include <utility>

namespace kvp
{

class Fd
{
  public:
    Fd() = default;
    explicit Fd(int fd) : m_fd(fd) {}
    Fd(Fd &&other) noexcept : m_fd(other.Release()) {}
    Fd &operator=(Fd &&other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    ~Fd() { Close(); }

    bool IsOpen() const { return m_fd >= 0; }
    int Get() const { return m_fd; }
    int Release() { return std::exchange(m_fd, -1); }
    int Close() { return m_fd >= 0 ? close(Release()) : 0; } // as close

  private:
    int m_fd = -1;
};

} // namespace kvp

#endif
