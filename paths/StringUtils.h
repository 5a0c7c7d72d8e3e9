#pragma once

#include "config/Export.h"

#include <string>
#include <vector>

// Strict taking apart of texts and of three-field versions ("major.minor.build"). Stateless and callable from any
// thread. None throws for bad input. Results are appended: an output vector is never cleared first.

/// Appends the fields of `s` between occurrences of the whole text `sep`, which must not be empty. A leading or doubled
/// separator gives empty fields, a trailing one gives none: "1..3." split at "." appends "1", "", "3". The empty text
/// appends nothing.
ONDPDFTOOLUTILS_EXPORT void StringSplit(const std::string &s, std::vector<std::string> &out, const std::string &sep);

/// Whether every byte is an ASCII digit; true for the empty text.
ONDPDFTOOLUTILS_EXPORT bool IsAllDigits(const std::string &s);

/// Appends the decimal value of every entry. False at the first entry that is not one or more ASCII digits or is
/// past the range of int; the values of earlier entries stay in `out`.
ONDPDFTOOLUTILS_EXPORT bool ToIntVec(const std::vector<std::string> &in, std::vector<int> &out);

/// Appends major, minor and build of a version of exactly three decimal fields; one trailing "." is accepted. False
/// otherwise: with another number of fields `out` is left alone, else it holds the values of the fields before the
/// offending one.
ONDPDFTOOLUTILS_EXPORT bool VersionToIntVec(const std::string &version, std::vector<int> &out);
