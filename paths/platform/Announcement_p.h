#pragma once

#include <QString>

class QWidget;

/// What a screen reader says unasked. Main thread only.
namespace platform {

/// Has the user's screen reader, when one runs, speak a text that has just come up in a widget.
/// macOS: at once, over what it is saying. Elsewhere: as the accessibility bus delivers the widget's alert.
void announce(QWidget *source, const QString &text);

} // namespace platform
