#pragma once

#include "tools/inspect/Report.h"

#include <vector>

namespace inspect {

struct Section
{
    const char *name;
    const char *summary;
    Json (*answers)();
    /// Whether the answers are findings, whose problems make the exit status.
    bool isExamination = false;
};

/// Every section, in the order in which the inspector prints them.
[[nodiscard]] const std::vector<Section> &sections();

} // namespace inspect
