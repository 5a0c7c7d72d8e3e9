#pragma once

#include "config/PdfReaderProductInfo.h"

#include <QDateTime>

/// What the emulated registry knows of the installation: the record's numbers, ids and install time, from key "common".
/// Creates the registry's folder only. Callable from any thread.
[[nodiscard]] ProductInfo storedProductInfo();

/// Calendar days, local time, from the installation to `now`, plus one: the day of installation is day 1. 0 for an
/// installation on a later day. `installTime` in seconds since the Unix epoch; one further from it than 400 thousand
/// million, some twelve thousand years, counts as that far.
[[nodiscard]] int installDays(qint64 installTime, const QDateTime &now);
