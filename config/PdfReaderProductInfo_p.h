#pragma once

#include "config/PdfReaderProductInfo.h"

/// What the emulated registry knows of the installation: the record's numbers, ids and install time, from key "common".
/// Creates nothing. Callable from any thread.
[[nodiscard]] ProductInfo storedProductInfo();
