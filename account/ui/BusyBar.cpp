#include "account/ui/BusyBar_p.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr QSize kSize(100, 3);
constexpr int kRoundMs = 1400;
constexpr double kPiece = 0.35; // of the bar's length

} // namespace

BusyBar::BusyBar(QWidget *parent) : QProgressBar(parent)
{
    setRange(0, 0);
    setTextVisible(false);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    m_way.setStartValue(-kPiece);
    m_way.setEndValue(1.0);
    m_way.setDuration(kRoundMs);
    m_way.setLoopCount(-1);
    connect(&m_way, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

QSize BusyBar::sizeHint() const
{
    return kSize;
}

void BusyBar::showEvent(QShowEvent *event)
{
    QProgressBar::showEvent(event);
    m_way.start();
}

void BusyBar::hideEvent(QHideEvent *event)
{
    m_way.stop();
    QProgressBar::hideEvent(event);
}

void BusyBar::paintEvent(QPaintEvent * /*event*/)
{
    const double radius = height() / 2.0;
    QPainterPath outline;
    outline.addRoundedRect(rect(), radius, radius);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(outline);
    painter.fillPath(outline, QColor(58, 104, 195, 51));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(58, 104, 195));
    painter.drawRoundedRect(QRectF(m_way.currentValue().toDouble() * width(), 0, kPiece * width(), height()), radius,
                            radius);
}
