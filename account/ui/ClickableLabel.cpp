#include "account/ui/ClickableLabel.h"

#include <QMouseEvent>

void ClickableLabel::mousePressEvent(QMouseEvent *event)
{
    event->accept();
}

void ClickableLabel::mouseMoveEvent(QMouseEvent *event)
{
    event->accept();
}

void ClickableLabel::mouseReleaseEvent(QMouseEvent *event)
{
    event->accept();
    emit clicked();
}
