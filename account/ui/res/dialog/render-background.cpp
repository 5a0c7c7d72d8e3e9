// render-background DRAWING PICTURE SCALE: renders the dialog's background in 16 bits a channel and dithers it to 8.
// Rounded, its gradients are bands: between their ends lie few steps.

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace {

/// Between 0 and 1, evenly spread over squares of 8 pixels: ordered dithering, after Bayer. Noise would look the same
/// and not compress.
double threshold(int x, int y)
{
    int order = 0;
    for (int bit = 0; bit < 3; ++bit) {
        const int column = x >> bit & 1, row = y >> bit & 1;
        order = order * 4 + ((column ^ row) * 2 + row);
    }
    return (order + 0.5) / 64;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 4)
        return 2;
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    QImage deep(drawing.defaultSize() * QByteArray(argv[3]).toInt(), QImage::Format_RGBX64);
    deep.fill(Qt::white);
    QPainter painter(&deep);
    drawing.render(&painter);
    painter.end();

    QImage picture(deep.size(), QImage::Format_RGB888);
    for (int y = 0; y < deep.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgba64 *>(deep.constScanLine(y));
        uchar *to = picture.scanLine(y);
        for (int x = 0; x < deep.width(); ++x, ++from) {
            for (const quint16 channel : {from->red(), from->green(), from->blue()})
                *to++ = static_cast<uchar>(qMin(255, static_cast<int>(channel / 257.0 + threshold(x, y))));
        }
    }
    return drawing.isValid() && picture.save(QString::fromLocal8Bit(argv[2]), "PNG", 0) ? 0 : 1;
}
