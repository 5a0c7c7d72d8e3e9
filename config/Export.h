#pragma once

#include <QtGlobal>

#ifdef ONDPDFTOOLUTILS_QT // from the pkg-config file, which cannot refuse anything itself
static_assert(QT_VERSION_MAJOR == ONDPDFTOOLUTILS_QT, "ondpdftoolutils was built with the other Qt");
#endif

/// Marks what users of the library see. Everything else stays hidden in the built library.
#define ONDPDFTOOLUTILS_EXPORT Q_DECL_EXPORT
