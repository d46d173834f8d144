// Where a name is looked for.
#ifndef KV_PLATFORM_KERNEL_SEARCH_H
#define KV_PLATFORM_KERNEL_SEARCH_H

#include "platform/kernel/errors.h"
#include "platform/kernel/machine.h"

namespace kvp
{

// Tries a name (UTF-8) as DWORD tries(const Place &): a bare one in each searched directory in
// order, until the answer is something else than "not there"; any other name at its one place.
template <class Try>
DWORD SearchFor(std::string_view name, Try tries)
{
    if (!IsBareName(name)) {
        Place place;
        return PlaceOf(name, place) ? tries(place) : ERROR_PATH_NOT_FOUND;
    }
    for (const Place &directory : CurrentSetup().aSearched) {
        Place place = directory;
        if (name.empty() || !place.Walk(name))
            return ERROR_FILE_NOT_FOUND;
        const DWORD dwError = tries(place);
        if (dwError != ERROR_FILE_NOT_FOUND && dwError != ERROR_PATH_NOT_FOUND)
            return dwError;
    }
    return ERROR_FILE_NOT_FOUND;
}

} // namespace kvp

#endif
