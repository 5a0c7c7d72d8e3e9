#pragma once

#include "tools/inspect/Report.h"

#include <string>

namespace inspect {

/// What a check found out, in words for whoever looks after the machine.
struct Finding
{
    std::string text; ///< what is wrong
    std::string effect; ///< what the user sees of it
    std::string remedy; ///< how to mend it
    std::string path = {}; ///< where
    int line = 0; ///< of the file; 0 means the file as a whole
};

/// The checks of an installation and what they found.
class Checklist
{
public:
    /// What is found from here on belongs to this check. The id is for programs and never changes.
    void begin(const char *id, const char *name);
    /// Something that changes what the library answers, or loses.
    void problem(const Finding &finding) { add("problem", finding); }
    /// Something to know that does no harm.
    void note(const Finding &finding) { add("note", finding); }

    [[nodiscard]] std::size_t size() const { return m_rows.size(); }
    /// {"schema": 1, "checks": [{"id", "name", "state", and "text", "effect", "remedy", "path", "line"}, ...]}: a row
    /// for each finding, and one of state "ok" for a check without any.
    [[nodiscard]] Json json() const;

private:
    void add(const char *state, const Finding &finding);

    Json m_rows = Json::array();
};

/// Examines the installation: names what the library forgives in silence. Reads no file without a bound, and writes
/// nothing.
[[nodiscard]] Json examination();

/// Whether an answer of examination() holds problems.
[[nodiscard]] bool hasProblems(const Json &examination);

} // namespace inspect
