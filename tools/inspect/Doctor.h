#pragma once

#include "tools/inspect/Report.h"

#include <string>

namespace inspect {

/// What an examination of the installation found. A problem changes what the library answers or loses; a note does not.
class Findings
{
public:
    /// `line` 0 means the file as a whole.
    void problem(const std::string &file, const std::string &what, int line = 0);
    void note(const std::string &file, const std::string &what);

    [[nodiscard]] const Json &problems() const { return m_problems; }
    [[nodiscard]] const Json &notes() const { return m_notes; }

private:
    Json m_problems = Json::array();
    Json m_notes = Json::array();
};

/// Names what the library forgives in silence: {"problems": ["FILE:LINE: WHAT", ...], "notes": [...]}. Reads, and
/// writes nothing.
[[nodiscard]] Json examination();

/// Whether an answer of examination() holds problems.
[[nodiscard]] bool hasProblems(const Json &examination);

} // namespace inspect
