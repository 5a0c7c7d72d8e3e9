#pragma once

#include "tools/inspect/Report.h"

#include <QRegularExpression>
#include <map>
#include <string>
#include <vector>

namespace inspect {

/// Takes out of texts what says who the user is: e-mail addresses, the names of the user and of the machine, the path
/// of the home folder, and whatever looks like a token or an id. The same text gets the same replacement, so that a
/// reader sees what belongs together.
class Mask
{
public:
    Mask();

    [[nodiscard]] std::string masked(const std::string &text);
    /// Every text in it, names of members included; members that hold an id or a name are masked whole.
    [[nodiscard]] Json masked(const Json &answers);

    /// How many texts of each kind were taken out, by the kind's name.
    [[nodiscard]] Json counts() const;

private:
    struct Rule
    {
        std::string kind;
        QRegularExpression pattern;
    };

    std::string replacement(const std::string &kind, const std::string &text);

    std::vector<Rule> m_rules;
    std::map<std::string, std::map<std::string, std::string>> m_replacements;
};

} // namespace inspect
