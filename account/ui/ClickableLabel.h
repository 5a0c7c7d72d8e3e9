#pragma once

#include "config/Export.h"

#include <QLabel>

/// A label that can be clicked. It keeps the mouse's press, move and release from the widgets below it.
class ONDPDFTOOLUTILS_EXPORT ClickableLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

signals:
    /// A mouse button was released that had been pressed here, wherever the mouse is by now.
    void clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
};
