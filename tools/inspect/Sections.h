#pragma once

#include "tools/inspect/Report.h"

#include <vector>

namespace inspect {

struct Section
{
    const char *name;
    const char *summary;
    Json (*answers)();
};

/// Every section, in the order in which the inspector prints them.
[[nodiscard]] const std::vector<Section> &sections();

} // namespace inspect
