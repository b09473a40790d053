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

// What only one of the pictures has.
const QRgb missing = qRgb(255, 170, 0);
const QRgb surplus = qRgb(0, 110, 220);
// What neither has, in a corner.
const QRgb nothing = qRgb(255, 255, 255);
const QRgb differing = qRgb(220, 0, 30);

/// The picture that shows where two of them differ, as large as either.
QImage differencePicture(const QImage &actual, const QImage &expected, int tolerance)
{
    QImage result(expected.size().expandedTo(actual.size()), QImage::Format_RGB32);
    for (int y = 0; y < result.height(); ++y) {
        for (int x = 0; x < result.width(); ++x) {
            const bool isExpected = expected.valid(x, y);
            const bool isFound = actual.valid(x, y);
            if (!isExpected || !isFound)
                result.setPixel(x, y, isExpected ? missing : isFound ? surplus : nothing);
            else if (distance(actual.pixel(x, y), expected.pixel(x, y)) > tolerance)
                result.setPixel(x, y, differing);
            else
                result.setPixel(x, y, faded(expected.pixel(x, y)));
        }
    }
    return result;
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
                pngOf(differencePicture(actual, expected, tolerance.perChannel))};
    }

    QRect bounds;
    qint64 count = 0;
    int farthest = 0;
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            const int off = distance(actual.pixel(x, y), expected.pixel(x, y));
            farthest = std::max(farthest, off);
            if (off > tolerance.perChannel) {
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
    return {false, message, pngOf(differencePicture(actual, expected, tolerance.perChannel))};
}

} // namespace Vantle::Tool::Replay
