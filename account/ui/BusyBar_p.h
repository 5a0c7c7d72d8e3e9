#pragma once

#include <QProgressBar>
#include <QVariantAnimation>

/// A thin bar along which a piece moves for as long as it is shown, whatever the style. It keeps its place when hidden.
class BusyBar : public QProgressBar
{
public:
    explicit BusyBar(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QVariantAnimation m_way; // of the piece's left end: -1 is one bar's length before the bar
};
