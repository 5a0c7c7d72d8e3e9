#pragma once

#include "config/Export.h"

#include <QDialog>
#include <QPoint>

/// A dialog without a frame, with round corners in place of one, painted with the palette's window brush. It is moved
/// by dragging it wherever none of its widgets takes the mouse: it follows as soon as the mouse is
/// QApplication::startDragDistance() away from where it was pressed, and to the pixel at the end of a drag. Around
/// whatever has the focus in it there is a frame.
class ONDPDFTOOLUTILS_EXPORT BaseDlg : public QDialog
{
    Q_OBJECT

public:
    /// Without a parent the dialog is a window by itself.
    explicit BaseDlg(QWidget *parent = nullptr);

    /// Of the dialog's corners, in device-independent pixels.
    static constexpr int kCornerRadius = 10;

    /// The image with round corners, transparent outside them, at the same pixel density. The radius is in
    /// device-independent pixels. Null for a null image.
    static QPixmap getRoundedPixmap(const QPixmap &pixmap, int radius);

protected:
    /// @name Handlers
    ///@{

    /// The dialog is moved and painted here. Who overrides one calls it.
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    ///@}

private:
    void dragTo(QPoint point);
    void moveBy(QPoint offset);

    bool pressed = false;
    bool dragReady = false; // the press may become a drag, and has not yet
    QPoint m_pressPoint; // in the dialog
    QPoint m_lastOffset; // kept for the interface, nothing reads it
};
