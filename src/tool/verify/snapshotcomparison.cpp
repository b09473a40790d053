#include "tool/verify/snapshotcomparison.h"

#include "tool/replay/picturecomparison.h"
#include "tool/stringliteral.h"

#include <QtCore/QJsonArray>
#include <QtCore/QMap>
#include <QtCore/QSet>

#include <algorithm>
#include <cmath>

namespace Vantle::Tool::Verify {

namespace {

using Objects = QMap<QString, QJsonObject>;

constexpr double pixel = 1.0;
constexpr double otherPrecision = 1e-6;

// What anti-aliasing makes of places that are a part of a pixel apart.
constexpr int colourTolerance = 8;
constexpr qint64 pixelTolerance = 200;

constexpr qsizetype shownLength = 60;

QString valueText(const QJsonValue &value)
{
    if (value.isUndefined())
        return QStringLiteral("nothing");
    const QString text = value.toString();
    return stringLiteral(text.size() > shownLength ? text.left(shownLength) + QChar(0x2026) : text);
}

bool isPlace(const QString &property)
{
    static const QSet<QString> places{
        QStringLiteral("x"),
        QStringLiteral("y"),
        QStringLiteral("width"),
        QStringLiteral("height"),
        QStringLiteral("implicitWidth"),
        QStringLiteral("implicitHeight"),
        QStringLiteral("contentX"),
        QStringLiteral("contentY"),
        QStringLiteral("contentWidth"),
        QStringLiteral("contentHeight"),
        QStringLiteral("availableWidth"),
        QStringLiteral("availableHeight"),
        QStringLiteral("baselineOffset"),
    };
    return places.contains(property);
}

bool isSame(const QString &property, const QJsonValue &one, const QJsonValue &other)
{
    if (one == other)
        return true;
    bool areNumbers[2] = {};
    const double first = one.toString().toDouble(&areNumbers[0]);
    const double second = other.toString().toDouble(&areNumbers[1]);
    if (!areNumbers[0] || !areNumbers[1])
        return false;
    const double allowed = isPlace(property) ? pixel : otherPrecision * std::max(std::abs(first), std::abs(second));
    return std::abs(first - second) <= allowed;
}

/// The objects by name; of several with the same the later ones have numbers.
Objects objectsOf(const QJsonObject &snapshot)
{
    Objects objects;
    QMap<QString, int> counts;
    const QJsonArray list = snapshot.value(QLatin1String("objects")).toArray();
    for (const QJsonValue &entry : list) {
        QString name = entry.toObject().value(QLatin1String("name")).toString();
        if (name.isEmpty())
            name = QStringLiteral("(%1 without a name)").arg(entry.toObject().value(QLatin1String("class")).toString());
        if (const int number = ++counts[name]; number > 1)
            name += QStringLiteral(" (%1)").arg(number);
        objects.insert(name, entry.toObject().value(QLatin1String("values")).toObject());
    }
    return objects;
}

QStringList valueDifferences(const QString &name, const QJsonObject &recorded, const QJsonObject &later,
                             const QJsonObject &replayed)
{
    QStringList lines;
    QStringList keys = recorded.keys();
    const QStringList others = replayed.keys();
    for (const QString &key : others) {
        if (!recorded.contains(key))
            keys.append(key);
    }
    for (const QString &key : std::as_const(keys)) {
        const bool changesByItself = recorded.value(key) != later.value(key);
        if (!changesByItself && !isSame(key, recorded.value(key), replayed.value(key)))
            lines.append(QStringLiteral("%1: %2 was %3, is %4")
                             .arg(name, key, valueText(recorded.value(key)), valueText(replayed.value(key))));
    }
    return lines;
}

QStringList objectDifferences(const Objects &recorded, const Objects &later, const Objects &replayed)
{
    QStringList lines;
    for (auto object = recorded.cbegin(); object != recorded.cend(); ++object) {
        if (!later.contains(object.key()))
            continue;
        const auto other = replayed.constFind(object.key());
        if (other == replayed.cend())
            lines.append(QStringLiteral("%1: was there, is not").arg(object.key()));
        else
            lines += valueDifferences(object.key(), *object, later.value(object.key()), *other);
    }
    for (auto object = replayed.cbegin(); object != replayed.cend(); ++object) {
        if (!recorded.contains(object.key()) && !later.contains(object.key()))
            lines.append(QStringLiteral("%1: was not there, is now").arg(object.key()));
    }
    return lines;
}

QMap<QString, QByteArray> picturesOf(const QJsonObject &snapshot)
{
    QMap<QString, QByteArray> pictures;
    const QJsonArray list = snapshot.value(QLatin1String("windows")).toArray();
    for (const QJsonValue &entry : list) {
        const QJsonObject window = entry.toObject();
        const QByteArray png = QByteArray::fromBase64(window.value(QLatin1String("png")).toString().toLatin1());
        if (!png.isEmpty())
            pictures.insert(window.value(QLatin1String("name")).toString(), png);
    }
    return pictures;
}

} // namespace

SnapshotDifferences compareSnapshots(const QJsonObject &recorded, const QJsonObject &later, const QJsonObject &replayed)
{
    const Objects objects = objectsOf(recorded);
    SnapshotDifferences result;
    result.objects = static_cast<int>(objects.size());
    result.lines = objectDifferences(objects, objectsOf(later), objectsOf(replayed));
    const QMap<QString, QByteArray> pictures = picturesOf(recorded);
    const QMap<QString, QByteArray> others = picturesOf(replayed);
    const QMap<QString, QByteArray> laterPictures = picturesOf(later);
    for (auto picture = pictures.cbegin(); picture != pictures.cend(); ++picture) {
        // A window that isn't there is missing among the objects, too.
        const Replay::PictureTolerance tolerance{colourTolerance, pixelTolerance};
        if (!others.contains(picture.key())
            || !Replay::comparePictures(laterPictures.value(picture.key()), *picture, tolerance).alike)
            continue;
        ++result.pictures;
        const Replay::PictureDifference difference = Replay::comparePictures(others.value(picture.key()), *picture,
                                                                             tolerance);
        if (!difference.alike)
            result.lines.append(QStringLiteral("picture of %1: %2").arg(picture.key(), difference.message));
    }
    return result;
}

} // namespace Vantle::Tool::Verify
