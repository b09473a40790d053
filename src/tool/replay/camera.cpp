#include "tool/replay/camera.h"

#include <QtCore/QBuffer>
#include <QtGui/QImageReader>

namespace Vantle::Tool::Replay {

namespace {

// A program that can't draw a window in this time has other problems.
constexpr std::chrono::seconds pictureLimit(10);

QSize sizeOfPng(QByteArray png)
{
    QBuffer buffer(&png);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader(&buffer, "png").size();
}

} // namespace

Picture Camera::take(const QJsonObject &target, QString *error) const
{
    const Answer answer = m_session->request(Protocol::Method::grab, target, pictureLimit);
    if (answer.kind != Answer::Result) {
        *error = answer.error.message;
        return {};
    }
    const QJsonObject result = answer.result.toObject();
    Picture picture;
    picture.png = QByteArray::fromBase64(result.value(QLatin1String("png")).toString().toLatin1());
    const QSize pixels = sizeOfPng(picture.png);
    if (!pixels.isValid()) {
        *error = QStringLiteral("the agent sent no picture");
        return {};
    }
    const double ratio = result.value(QLatin1String("ratio")).toDouble(1);
    picture.size = QSizeF(pixels) / (ratio > 0 ? ratio : 1);
    picture.window = result.value(QLatin1String("window")).toInteger();
    return picture;
}

Picture Camera::window(const QJsonObject &target) const
{
    QString error;
    Picture picture;
    if (!target.isEmpty()) {
        QJsonObject params = target;
        params.insert(QStringLiteral("window"), true);
        picture = take(params, &error);
    }
    return picture.png.isEmpty() && !m_session->isOverdue() ? take({}, &error) : picture;
}

Picture Camera::failure(const QJsonObject &target) const
{
    return m_showsFailures && m_session->isRunning() && !m_session->isOverdue() ? window(target) : Picture();
}

} // namespace Vantle::Tool::Replay
