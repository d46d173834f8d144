// A shared object for the tests that has no DllInitialize of its own and needs one that has.
extern "C" __attribute__((visibility("default"))) int Answer();

extern "C" __attribute__((visibility("default"))) int TwiceTheAnswer()
{
    return 2 * Answer();
}
