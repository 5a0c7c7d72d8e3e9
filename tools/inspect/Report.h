#pragma once

#include "tools/common/Escaped.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace inspect {

/// What a section or an action answers: an object, keyed by the getter's name, in the order of output.
using Json = nlohmann::ordered_json;

/// Named answers, printed together.
class Report
{
public:
    void add(const std::string &name, Json answers) { m_parts[name] = std::move(answers); }

    /// One JSON object, on many lines or on one. Bytes that are no UTF-8 come out as U+FFFD, control characters
    /// escaped.
    void printJson(std::ostream &out, bool onOneLine = false) const;
    /// Aligned text, one answer a line; control characters are escaped.
    void printText(std::ostream &out, bool coloured) const;

private:
    Json m_parts = Json::object();
};

} // namespace inspect
