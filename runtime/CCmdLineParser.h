#pragma once

#include "config/Export.h"

#include <QString>
#include <map>

/// Splits a command line, given as one text, into switches and their values.
///
/// The text is scanned, not split into words first:
///
/// - A switch begins after any "-" or "/", wherever it stands, and its name ends at the next space, ":" or "=", or with
///   the text. A path is therefore a switch of its own: "/tmp/x y" holds the switch "tmp/x".
/// - After ":" or "=" follows its value: up to the closing quotation mark when it begins with one, otherwise up to the
///   next space; without such an end, the rest of the text. Quotation marks are not part of the value; anything else in
///   it is left as it is.
/// - Exactly one delimiter is taken off: "--name" is the switch "-name". Switches without a name are passed over.
/// - Of switches with the same name the first one counts.
///
/// Every text is acceptable, whatever it holds; the work is proportional to its length. Wide texts are UTF-32 and end
/// at their NUL. A null key is no switch's name. Any number of threads may ask a parser that none is changing.
class ONDPDFTOOLUTILS_EXPORT CCmdLineParser
{
public:
    /// Names and values in the order of the names' UTF-16 code units.
    using KeyValues = std::map<QString, QString>;
    /// Valid until the next Parse().
    using const_iterator = KeyValues::const_iterator;

    /// Parses `cmdLine` unless it is null. Without `matchCase` names are kept in lower case (that of Unicode), and
    /// keys are taken in any case.
    explicit CCmdLineParser(const wchar_t *cmdLine = nullptr, bool matchCase = false);
    virtual ~CCmdLineParser();

    /// Replaces all switches by those of `cmdLine`; whether it holds any. For null, false with nothing changed.
    bool Parse(const wchar_t *cmdLine);

    /// Whether the switch was given.
    [[nodiscard]] bool HasKey(const wchar_t *key) const;
    /// Whether it was given with a value that is not empty.
    [[nodiscard]] bool HasVal(const wchar_t *key) const;
    /// Its value; empty when it was not given, or given without one.
    [[nodiscard]] QString GetVal(const wchar_t *key) const;
    /// Whether the switch was given; `value` receives its value then, and is left alone otherwise.
    bool GetVal(const wchar_t *key, QString &value) const;
    /// Its value as a decimal integer, 0 for a value that is none; `defaultValue` when the switch was not given, or
    /// given without a value.
    [[nodiscard]] int GetIntVal(const wchar_t *key, int defaultValue) const;

    /// The first switch in the order of names; the end when there is none.
    [[nodiscard]] const_iterator getFirst() const;
    /// Hands out the switch at `it`, advances `it` and returns it. At the end, `key` becomes empty and the rest is left
    /// alone.
    const_iterator getNext(const_iterator &it, QString &key, QString &value) const;
    /// Whether `it` is behind the last switch.
    [[nodiscard]] bool isLast(const const_iterator &it) const;

private:
    static constexpr wchar_t m_sDelimeters[] = {L'-', L'/'};
    static constexpr wchar_t m_sValueSep[] = {L' ', L':', L'='};
    static constexpr wchar_t m_sQuotes[] = {L'"'};

    [[nodiscard]] const_iterator findKey(const wchar_t *key) const;
    void insert(QStringView key, QStringView value);

    QString m_sFullLine;
    KeyValues m_keyValues;
    bool m_bMatchCase;
};
