#include "tool/verify/snapshotcomparison.h"

#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QJsonArray>
#include <QtGui/QImage>

using namespace Vantle::Tool::Verify;

namespace {

QJsonObject object(const char *name, const QJsonObject &values)
{
    return {{QStringLiteral("name"), QString::fromUtf8(name)},
            {QStringLiteral("class"), QStringLiteral("QQuickItem")},
            {QStringLiteral("values"), values}};
}

QJsonObject snapshot(const QJsonArray &objects, const QJsonArray &windows = {})
{
    return {{QStringLiteral("objects"), objects}, {QStringLiteral("windows"), windows}};
}

QJsonObject values(const char *key, const char *value)
{
    return {{QString::fromUtf8(key), QString::fromUtf8(value)}};
}

/// What differs when an object has the one value or the other.
QStringList differences(const char *key, const char *recorded, const char *replayed)
{
    const QJsonObject before = snapshot({object("Main Item#a", values(key, recorded))});
    return compareSnapshots(before, before, snapshot({object("Main Item#a", values(key, replayed))})).lines;
}

QJsonObject window(const QColor &colour, int dots = 0)
{
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(colour);
    for (int i = 0; i < dots; ++i)
        image.setPixelColor(i % 100, i / 100, Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return {{QStringLiteral("name"), QStringLiteral("Main")},
            {QStringLiteral("png"), QString::fromLatin1(png.toBase64())}};
}

TEST(SnapshotComparison, theSameIsNoDifference)
{
    const QJsonObject one = snapshot({object("Main", values("title", "a")), object("Main Item#a", {})},
                                     {window(Qt::blue)});
    const SnapshotDifferences result = compareSnapshots(one, one, one);
    EXPECT_TRUE(result.isNone()) << qPrintable(result.lines.join(QLatin1Char('\n')));
    EXPECT_EQ(result.objects, 2);
    EXPECT_EQ(result.pictures, 1);
}

TEST(SnapshotComparison, valuesAreToldWithTheirObject)
{
    EXPECT_EQ(differences("checked", "true", "false"),
              QStringList(QStringLiteral("Main Item#a: checked was \"true\", is \"false\"")));
    EXPECT_EQ(differences("text", "a", "b").size(), 1);
}

TEST(SnapshotComparison, placesMayBeAPixelApartAndOtherNumbersMayNot)
{
    EXPECT_TRUE(differences("x", "10", "10.75").isEmpty());
    EXPECT_TRUE(differences("contentY", "-3", "-2").isEmpty());
    EXPECT_EQ(differences("x", "10", "11.5").size(), 1);
    EXPECT_EQ(differences("value", "10", "10.75").size(), 1);
    EXPECT_TRUE(differences("value", "0.333333333333333", "0.333333333333334").isEmpty());
}

TEST(SnapshotComparison, objectsThatCameOrWentAreDifferences)
{
    const QJsonObject one = snapshot({object("Main", {}), object("Main Item#a", {})});
    const QJsonObject other = snapshot({object("Main", {}), object("Main Item#b", {})});
    EXPECT_EQ(compareSnapshots(one, one, other).lines,
              QStringList({QStringLiteral("Main Item#a: was there, is not"),
                           QStringLiteral("Main Item#b: was not there, is now")}));
}

TEST(SnapshotComparison, objectsOfOneNameAreCountedApart)
{
    const QJsonObject two = snapshot({object("", values("x", "1")), object("", values("x", "50"))});
    const QJsonObject one = snapshot({object("", values("x", "1"))});
    EXPECT_TRUE(compareSnapshots(two, two, two).isNone());
    EXPECT_EQ(compareSnapshots(two, two, one).lines.size(), 1);
}

TEST(SnapshotComparison, whatChangesByItselfIsNotCompared)
{
    const QJsonObject first = snapshot({object("Main Item#a",
                                               {{QStringLiteral("y"), QStringLiteral("1")},
                                                {QStringLiteral("text"), QStringLiteral("t")}}),
                                        object("Main Item#spark", {})},
                                       {window(Qt::blue)});
    const QJsonObject later = snapshot({object("Main Item#a",
                                               {{QStringLiteral("y"), QStringLiteral("9")},
                                                {QStringLiteral("text"), QStringLiteral("t")}})},
                                       {window(Qt::green)});
    const QJsonObject replayed = snapshot({object("Main Item#a",
                                                  {{QStringLiteral("y"), QStringLiteral("90")},
                                                   {QStringLiteral("text"), QStringLiteral("u")}})},
                                          {window(Qt::red)});
    const SnapshotDifferences result = compareSnapshots(first, later, replayed);
    EXPECT_EQ(result.lines, QStringList(QStringLiteral("Main Item#a: text was \"t\", is \"u\"")));
    EXPECT_EQ(result.pictures, 0);
}

TEST(SnapshotComparison, picturesMayBeOffByALittle)
{
    const auto compare = [](const QJsonObject &one, const QJsonObject &other) {
        const QJsonObject recorded = snapshot({}, {one});
        return compareSnapshots(recorded, recorded, snapshot({}, {other})).lines;
    };
    EXPECT_TRUE(compare(window(QColor(10, 10, 10)), window(QColor(14, 10, 10))).isEmpty());
    EXPECT_TRUE(compare(window(Qt::blue), window(Qt::blue, 150)).isEmpty());
    const QStringList lines = compare(window(Qt::blue), window(Qt::blue, 400));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines.first().startsWith(QStringLiteral("picture of Main: 400 of 10000 pixels differ")))
        << qPrintable(lines.first());
}

TEST(SnapshotComparison, longTextsAreCut)
{
    const QByteArray text(1000, 'x');
    EXPECT_LT(differences("text", text.constData(), "y").first().size(), 200);
}

} // namespace
