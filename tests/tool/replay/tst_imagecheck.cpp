#include "tool/replay/imagecheck.h"

#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QColor>
#include <QtGui/QImage>

using namespace Vantle::Tool::Replay;

namespace {

QByteArray png(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A grey picture of 10×8, with some pixels in another colour.
QByteArray picture(std::initializer_list<QPoint> points = {}, QColor colour = Qt::red)
{
    QImage image(10, 8, QImage::Format_RGB32);
    image.fill(QColor(100, 100, 100));
    for (const QPoint &point : points)
        image.setPixelColor(point, colour);
    return png(image);
}

class ImageChecks : public testing::Test
{
protected:
    QString file(const char *name) const { return m_directory.filePath(QLatin1String(name)); }

    void keep(const QByteArray &bytes) const
    {
        QFile kept(file("kept.png"));
        ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
        kept.write(bytes);
    }

    ImageCheck check(const QByteArray &found, const PictureTolerance &tolerance = {}, bool update = false) const
    {
        return checkImage(found, file("kept.png"), tolerance, update);
    }

private:
    QTemporaryDir m_directory;
};

TEST_F(ImageChecks, anEqualPicturePassesAndLeavesNothing)
{
    keep(picture());
    EXPECT_TRUE(check(picture()).passed);
    EXPECT_FALSE(QFile::exists(file("kept-found.png")));
}

TEST_F(ImageChecks, aDifferenceIsCountedPlacedAndDrawn)
{
    keep(picture());
    const ImageCheck result = check(picture({{2, 3}, {4, 3}}));
    EXPECT_FALSE(result.passed);
    EXPECT_TRUE(
        result.message.startsWith(QStringLiteral("2 of 80 pixels differ, by up to 155, within 3×1 at (2, 3); ")))
        << qPrintable(result.message);
    const QImage difference(file("kept-difference.png"));
    ASSERT_EQ(difference.size(), QSize(10, 8));
    EXPECT_EQ(difference.pixelColor(2, 3), QColor(220, 0, 30));
    const QColor background = difference.pixelColor(3, 3);
    EXPECT_EQ(background.red(), background.green());
    EXPECT_GT(background.red(), 200);
    EXPECT_EQ(QImage(file("kept-found.png")).pixelColor(2, 3), QColor(Qt::red));
}

TEST_F(ImageChecks, theToleranceIsExact)
{
    keep(picture());
    const QByteArray nearly = picture({{0, 0}}, QColor(105, 100, 97));
    EXPECT_FALSE(check(nearly, {4, 0}).passed);
    EXPECT_TRUE(check(nearly, {5, 0}).passed);
    EXPECT_FALSE(check(picture({{0, 0}, {1, 1}}), {0, 1}).passed);
    EXPECT_TRUE(check(picture({{0, 0}, {1, 1}}), {0, 2}).passed);
}

TEST_F(ImageChecks, otherSizesAreNeverAlike)
{
    keep(picture());
    const ImageCheck result = check(png(QImage(10, 9, QImage::Format_RGB32)), {255, 1000});
    EXPECT_FALSE(result.passed);
    EXPECT_TRUE(result.message.startsWith(QStringLiteral("the sizes differ: expected 10×8, found 10×9; ")));
}

TEST_F(ImageChecks, theDifferenceOfOtherSizesShowsWhatOnlyOneOfThemHas)
{
    keep(picture());
    QImage found(12, 6, QImage::Format_RGB32);
    found.fill(QColor(100, 100, 100));
    found.setPixelColor(1, 1, Qt::red);
    const ImageCheck result = check(png(found));
    EXPECT_TRUE(result.message.contains(QStringLiteral("; difference: ")));
    const QImage difference(file("kept-difference.png"));
    ASSERT_EQ(difference.size(), QSize(12, 8));
    EXPECT_EQ(difference.pixelColor(1, 1), QColor(220, 0, 30));
    EXPECT_EQ(difference.pixelColor(0, 7), QColor(255, 170, 0)) << "is missing";
    EXPECT_EQ(difference.pixelColor(11, 0), QColor(0, 110, 220)) << "is too much";
    EXPECT_EQ(difference.pixelColor(11, 7), QColor(Qt::white)) << "has neither";
}

TEST_F(ImageChecks, nothingKeptFailsWithTheWayOut)
{
    const ImageCheck result = check(picture());
    EXPECT_FALSE(result.passed);
    EXPECT_TRUE(result.message.startsWith(QStringLiteral("there is no picture %1 yet").arg(file("kept.png"))));
    EXPECT_TRUE(result.message.endsWith(QStringLiteral("--update-images keeps what was found")));
    EXPECT_TRUE(QFile::exists(file("kept-found.png")));
    EXPECT_FALSE(QFile::exists(file("kept.png")));
}

TEST_F(ImageChecks, brokenFilesAreNamed)
{
    keep("no picture");
    EXPECT_TRUE(check(picture()).message.contains(QStringLiteral("the picture that was kept can't be read")));
}

TEST_F(ImageChecks, updatingKeepsAndCleansUp)
{
    EXPECT_FALSE(check(picture()).passed);
    EXPECT_TRUE(check(picture({{1, 1}}), {}, true).passed);
    EXPECT_FALSE(QFile::exists(file("kept-found.png")));
    EXPECT_TRUE(check(picture({{1, 1}})).passed);
    EXPECT_FALSE(check(picture()).passed);
    EXPECT_TRUE(check(picture({{1, 1}})).passed);
    EXPECT_FALSE(QFile::exists(file("kept-difference.png"))) << "is out of date";
}

TEST_F(ImageChecks, updatingChangesNothingThatIsAlike)
{
    keep(picture());
    EXPECT_TRUE(check(picture({{0, 0}}, QColor(101, 100, 100)), {2, 0}, true).passed);
    EXPECT_TRUE(check(picture()).passed) << "the kept picture was replaced";
}

TEST_F(ImageChecks, folderOfTheKeptPictureIsMade)
{
    EXPECT_TRUE(checkImage(picture(), file("deep/er/kept.png"), {}, true).passed);
    EXPECT_TRUE(QFile::exists(file("deep/er/kept.png")));
}

TEST(PictureComparison, nothingIsLikeNothing)
{
    EXPECT_FALSE(comparePictures({}, picture(), {}).alike);
    EXPECT_FALSE(comparePictures(picture(), {}, {}).alike);
}

} // namespace
