// Blocks and libraries that release themselves, what else must be done at a block's end, and the
// two-step read of the spooler's answers.
#ifndef KV_BASE_HANDLES_H
#define KV_BASE_HANDLES_H

#include <memory>

#include "platform/win32.h"

// A deleter that names its release call.
template <auto Release>
struct ReleaseWith {
    template <class T>
    void operator()(T *p) const
    {
        Release(p);
    }
};
template <class T>
using GlobalPtr = std::unique_ptr<T, ReleaseWith<GlobalFree>>;
template <class T>
using LocalPtr = std::unique_ptr<T, ReleaseWith<LocalFree>>;
using LibraryPtr = std::unique_ptr<HINSTANCE__, ReleaseWith<FreeLibrary>>;

// Acts at the end of its block, also when memory runs out in it: const AtEnd release([&] { ... });
template <class Action>
class AtEnd
{
  public:
    explicit AtEnd(Action action) : act(action) {}
    ~AtEnd() { act(); }
    AtEnd(const AtEnd &) = delete;
    AtEnd &operator=(const AtEnd &) = delete;

  private:
    Action act;
};

template <class T>
GlobalPtr<T> NewGlobal(size_t cb)
{
    return GlobalPtr<T>(static_cast<T *>(GlobalAlloc(GMEM_FIXED | GMEM_ZEROINIT, cb)));
}

// The spooler's readers want a size query first, which must fail for want of a buffer, then a
// buffer of that size. query(buffer, size, &needed) is such a reader; T is what stands at the
// start of its answer. Null when either step fails or memory runs out.
template <class T, class Query>
GlobalPtr<T> ReadSized(Query query)
{
    DWORD cb = 0;
    query(nullptr, DWORD{0}, &cb);
    if (GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return nullptr;
    GlobalPtr<T> answer = NewGlobal<T>(cb);
    if (!answer || !query(reinterpret_cast<LPBYTE>(answer.get()), cb, &cb))
        return nullptr;
    return answer;
}

#endif
