// A companion program's view: a block with a settings record behind it, on a machine with one
// small model, "KORVA One".
#ifndef KV_TESTS_API_API_TEST_H
#define KV_TESTS_API_API_TEST_H

#include <sys/mman.h>
#include <unistd.h>

#include "kvui/kvdd.h"
#include "tests/datafile/model_test.h"

#pragma pack(push, 1)
struct Caller {
    KVDDBLOCK block;
    DriverDevMode record;
};
#pragma pack(pop)

// A page below 4 GiB with nothing mapped before and behind it.
class LonePage
{
  public:
    LonePage()
        : start(static_cast<uint8_t *>(
              mmap(nullptr, 3 * cbPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_32BIT, -1, 0)))
    {
        mprotect(First(), cbPage, PROT_READ | PROT_WRITE);
    }
    ~LonePage() { munmap(start, 3 * cbPage); }
    LonePage(const LonePage &) = delete;
    LonePage &operator=(const LonePage &) = delete;

    uint8_t *First() const { return start + cbPage; }
    // The last so many bytes.
    uint8_t *Last(size_t cb) const { return start + 2 * cbPage - cb; }

  private:
    const size_t cbPage = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    uint8_t *const start;
};

inline uint32_t LowAddress(const uint8_t *at)
{
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(at));
}

using Words = std::vector<int>;

// The words of a structure that has nothing else.
template <class Structure>
Words WordsOf(const Structure &structure)
{
    int16_t words[sizeof(Structure) / 2];
    std::memcpy(words, &structure, sizeof words);
    return Words(std::begin(words), std::end(words));
}

inline Words MarginsOf(const DriverDevMode &record)
{
    return {record.wMarginLeft, record.wMarginTop, record.wMarginRight, record.wMarginBottom};
}

class ApiTest : public ModelTest
{
  public:
    void SetUp() override
    {
        ModelTest::SetUp();
        Install();
    }
    void TearDown() override
    {
        EXPECT_TRUE(UIInstance.dat.lpPapers.empty() && !UIInstance.dat.lpDatHeader)
            << "what a call loaded outlives it";
        ModelTest::TearDown();
    }

    // Puts the model as it is now on the machine, and its defaults into the record.
    void Install()
    {
        ModelTest::Install();
        caller = {};
        caller.block.sDistance = sizeof(KVDDBLOCK);
        record = NamedRecord(u"KORVA One");
        ASSERT_EQ(KVDD_GetOrgDevMode(nullptr, &record), 1);
    }

    int32_t Range(uint32_t item, void *range) { return KVDD_GetRange(&caller, item, range); }
    int32_t Get(uint32_t item, void *data) { return KVDD_GetData(&caller, item, data); }
    int32_t Set(uint32_t item, intptr_t value) { return KVDD_SetData(&caller, item, value); }
    int32_t SetPaper(KVDDSETPAPER words) { return SetWords(KVDD_PAPER, words); }
    int32_t SetMode(KVDDPRINTMODE words) { return SetWords(KVDD_PRINTMODE, words); }
    template <class Structure>
    int32_t SetWords(uint32_t item, Structure &words)
    {
        return Set(item, reinterpret_cast<intptr_t>(&words));
    }
    // The value of an item of one word; a failure's result far outside the words.
    int Word(uint32_t item)
    {
        int16_t word = -21846;
        const int32_t result = Get(item, &word);
        return result == KVDD_OK ? word : 1000000 + result;
    }

    Caller caller{};
    DriverDevMode &record = caller.record;
};

#endif
