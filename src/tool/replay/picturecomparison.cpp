#include "tool/replay/picturecomparison.h"

#include <QtCore/QBuffer>
#include <QtCore/QRect>
#include <QtGui/QImage>

#include <algorithm>
#include <cstdlib>

namespace Vantle::Tool::Replay {

namespace {

QString sizeText(const QImage &image)
{
    return QStringLiteral("%1×%2").arg(image.width()).arg(image.height());
}

int distance(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other)), std::abs(qAlpha(one) - qAlpha(other))});
}

/// A pixel of the background: pale, so that what differs stands out.
QRgb faded(QRgb pixel)
{
    const int grey = 255 - (255 - qGray(pixel)) / 4;
    return qRgb(grey, grey, grey);
}

QByteArray pngOf(const QImage &image)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png;
}

} // namespace

PictureDifference comparePictures(const QByteArray &found, const QByteArray &kept, const PictureTolerance &tolerance)
{
    const QImage actual = QImage::fromData(found).convertToFormat(QImage::Format_ARGB32);
    const QImage expected = QImage::fromData(kept).convertToFormat(QImage::Format_ARGB32);
    if (actual.isNull() || expected.isNull()) {
        const QString which = expected.isNull() ? QStringLiteral("kept") : QStringLiteral("found");
        return {false, QStringLiteral("the picture that was %1 can't be read").arg(which), {}};
    }
    if (actual.size() != expected.size()) {
        return {false,
                QStringLiteral("the sizes differ: expected %1, found %2").arg(sizeText(expected), sizeText(actual)),
                {}};
    }

    QImage difference(expected.size(), QImage::Format_RGB32);
    QRect bounds;
    qint64 count = 0;
    int farthest = 0;
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            const int off = distance(actual.pixel(x, y), expected.pixel(x, y));
            farthest = std::max(farthest, off);
            const bool differs = off > tolerance.perChannel;
            difference.setPixel(x, y, differs ? qRgb(220, 0, 30) : faded(expected.pixel(x, y)));
            if (differs) {
                ++count;
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    if (count <= tolerance.pixelCount)
        return {true, {}, {}};
    const QString message = QStringLiteral("%1 of %2 pixels differ, by up to %3, within %4×%5 at (%6, %7)")
                                .arg(count)
                                .arg(qint64(expected.width()) * expected.height())
                                .arg(farthest)
                                .arg(bounds.width())
                                .arg(bounds.height())
                                .arg(bounds.x())
                                .arg(bounds.y());
    return {false, message, pngOf(difference)};
}

} // namespace Vantle::Tool::Replay
