// The module's one block of model data and working state.
#include "datafile/instance.h"

UIINSTANCE UIInstance{};
UIINSTANCE *const pInstance = &UIInstance;
