#include "account/ui/BaseDlg.h"

#include "config/QtVersion_p.h"

#include <QApplication>
#include <QCommonStyle>
#include <QFocusFrame>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

/// Draws a frame around what has the focus, a gap away from it: on the dialog's own background, whatever colour the
/// widget and the user's settings have.
class FocusFrameStyle : public QCommonStyle
{
public:
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        if (metric == PM_FocusFrameHMargin || metric == PM_FocusFrameVMargin)
            return kGap + kLine;
        return QCommonStyle::pixelMetric(metric, option, widget);
    }
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override
    {
        if (element != CE_FocusFrame)
            return QCommonStyle::drawControl(element, option, painter, widget);
        constexpr double kHalf = kLine / 2.0;
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(QColor(0x1D, 0x3B, 0x7A), kLine));
        painter->drawRoundedRect(QRectF(widget->rect()).adjusted(kHalf, kHalf, -kHalf, -kHalf), kRadius, kRadius);
    }

private:
    static constexpr int kGap = 2, kLine = 2, kRadius = 6;
};

/// A frame of one kind for all widgets of a window; styles and sheets draw it as they like, or hardly at all.
void showFocusIn(QWidget *window)
{
    auto *frame = new QFocusFrame(window);
    auto *style = new FocusFrameStyle;
    style->setParent(frame);
    frame->setStyle(style);
    QObject::connect(qApp, &QApplication::focusChanged, frame, [window, frame](QWidget * /*old*/, QWidget *now) {
        frame->setWidget(now && window->isAncestorOf(now) ? now : nullptr);
    });
}

} // namespace

BaseDlg::BaseDlg(QWidget *parent) : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
    showFocusIn(this);
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
