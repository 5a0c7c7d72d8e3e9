#pragma once

#include "config/Export.h"

#include <QLabel>

/// A label that can be clicked. The widgets below it get none of the mouse events that it gets.
class ONDPDFTOOLUTILS_EXPORT ClickableLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

Q_SIGNALS:
    /// A mouse button that was pressed here was released, here or elsewhere.
    void clicked();

protected:
    /// @name Handlers
    ///@{

    /// Clicks are told apart here. Who overrides one calls it.
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    ///@}
};
