#include "account/ui/BaseDlg.h"

#include "config/QtVersion_p.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

BaseDlg::BaseDlg(QWidget *parent) : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
}

QPixmap BaseDlg::getRoundedPixmap(const QPixmap &pixmap, int radius)
{
    if (pixmap.isNull())
        return {};
    QPixmap rounded(pixmap.size());
    rounded.setDevicePixelRatio(pixmap.devicePixelRatioF());
    rounded.fill(Qt::transparent);
    QPainterPath outline;
    outline.addRoundedRect(QRectF(QPointF(), QSizeF(pixmap.size()) / pixmap.devicePixelRatioF()), radius, radius);
    QPainter painter(&rounded);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(outline);
    painter.drawPixmap(0, 0, pixmap);
    return rounded;
}

void BaseDlg::mousePressEvent(QMouseEvent *event)
{
    pressed = true;
    dragReady = true;
    m_pressPoint = qt::position(*event).toPoint();
}

void BaseDlg::mouseMoveEvent(QMouseEvent *event)
{
    if (pressed)
        dragTo(qt::position(*event).toPoint());
}

void BaseDlg::mouseReleaseEvent(QMouseEvent *event)
{
    if (!pressed)
        return;
    pressed = false;
    // A click with an unsteady hand is no drag; the end of a drag counts to the pixel.
    const QPoint point = qt::position(*event).toPoint();
    if (dragReady)
        dragTo(point);
    else
        moveBy(point - m_pressPoint);
}

void BaseDlg::dragTo(QPoint point)
{
    const QPoint offset = point - m_pressPoint;
    if (offset.manhattanLength() < QApplication::startDragDistance())
        return;
    dragReady = false;
    moveBy(offset);
}

void BaseDlg::moveBy(QPoint offset)
{
    move(pos() + offset);
    m_lastOffset = offset;
}

void BaseDlg::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().window());
    painter.drawRoundedRect(rect(), kCornerRadius, kCornerRadius);
}
