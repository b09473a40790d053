#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Vantle::Tool::Replay {

/// How alike two pictures have to be.
struct PictureTolerance
{
    int perChannel = 0;    ///< how far red, green, blue or opacity may be off, of 255
    qint64 pixelCount = 0; ///< number of pixels that may be off by more
};

/// How two pictures differ.
struct PictureDifference
{
    bool alike = false;
    QString message; ///< in words, if they aren't
    /// PNG: what was kept in pale grey, what differs in red; of pictures of
    /// different sizes, what is missing in orange and what is too much in blue.
    QByteArray picture;
};

/// Compares two pictures, given as PNG. Needs no QGuiApplication.
PictureDifference comparePictures(const QByteArray &found, const QByteArray &kept, const PictureTolerance &tolerance);

} // namespace Vantle::Tool::Replay
