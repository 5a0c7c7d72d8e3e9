#pragma once

#include <QtGlobal>

/// Marks what users of the library see. Everything else stays hidden in the built library.
#define ONDPDFTOOLUTILS_EXPORT Q_DECL_EXPORT
