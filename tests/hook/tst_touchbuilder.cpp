#include "hook/touchbuilder.h"

#include <gtest/gtest.h>

#include <QtCore/QRandomGenerator>

#include <bit>
#include <cmath>
#include <limits>

using Vantle::TouchBuilder;
using Gesture = TouchBuilder::MultiTouchInfo;

namespace {

TouchBuilder::Point point(qint32 id, float x, float y)
{
    TouchBuilder::Point result;
    result.id = id;
    result.x = x;
    result.y = y;
    return result;
}

Gesture pinch()
{
    Gesture gesture(640, 480.5F, TouchBuilder::Pixels);
    gesture.steps.push_back({0, {point(1, 10, 20.25F), point(2, -3, 0.1F)}});
    gesture.steps.push_back({17, {}});
    gesture.steps.back().points.push_back({-7, 1e-20F, 3e20F, 0.5F, 12, 4000000000U});
    return gesture;
}

std::string errorOf(const QByteArray &xml)
{
    QString error;
    EXPECT_FALSE(Gesture::fromXml(xml, &error)) << xml.constData();
    EXPECT_FALSE(Gesture::fromXml(xml)) << "the message is optional";
    return error.toStdString();
}

/// A gesture of one step and one point, whose tags are these.
QByteArray gestureXml(const char *gesture, const char *step, const char *pointTag)
{
    return QByteArray(gesture) + '\n' + step + '\n' + pointTag + "\n</step></gesture>";
}

const char *const goodGesture = R"(<gesture width="6" height="4" unit="pixels">)";
const char *const goodStep = R"(<step time="0">)";
const char *const goodPoint = R"(<point id="1" x="1" y="2" pressure="1" size="-1"/>)";

TEST(TouchXml, hasOneLineForEachTag)
{
    EXPECT_EQ(pinch().toXml("  ", 1).toStdString(),
              "  <gesture width=\"640\" height=\"480.5\" unit=\"pixels\">\n"
              "    <step time=\"0\">\n"
              "      <point id=\"1\" x=\"10\" y=\"20.25\" pressure=\"0\" size=\"-1\"/>\n"
              "      <point id=\"2\" x=\"-3\" y=\"0.1\" pressure=\"0\" size=\"-1\"/>\n"
              "    </step>\n"
              "    <step time=\"17\">\n"
              "      <point id=\"-7\" x=\"1e-20\" y=\"3e+20\" pressure=\"0.5\" size=\"12\" reserved=\"4000000000\"/>\n"
              "    </step>\n"
              "  </gesture>\n");
}

TEST(TouchXml, isIndentedAsAskedFor)
{
    Gesture gesture(1, 2, TouchBuilder::Pixels);
    gesture.steps.push_back({});
    const std::string flat =
        "<gesture width=\"1\" height=\"2\" unit=\"pixels\">\n<step time=\"0\">\n</step>\n</gesture>\n";
    EXPECT_EQ(gesture.toXml("", 3).toStdString(), flat);
    EXPECT_EQ(gesture.toXml(nullptr, 3).toStdString(), flat);
    const std::string tabs =
        "<gesture width=\"1\" height=\"2\" unit=\"pixels\">\n\t<step time=\"0\">\n\t</step>\n</gesture>\n";
    EXPECT_EQ(gesture.toXml("\t", 0).toStdString(), tabs);
    EXPECT_EQ(gesture.toXml("\t", -5).toStdString(), tabs);
}

TEST(TouchXml, isReadBackAsTheSameGesture)
{
    for (const int level : {0, 1, 4}) {
        QString error = QStringLiteral("before");
        const auto read = Gesture::fromXml(pinch().toXml("  ", level), &error);
        ASSERT_TRUE(read) << qPrintable(error);
        EXPECT_EQ(*read, pinch());
        EXPECT_TRUE(error.isEmpty());
    }
    const Gesture empty(0, -0.0F, TouchBuilder::Pixels);
    const auto read = Gesture::fromXml(empty.toXml("", 0));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, empty);
    EXPECT_TRUE(std::signbit(read->areaHeight()));
}

TEST(TouchXml, keepsEveryFiniteNumberBitByBit)
{
    QRandomGenerator random(99);
    Gesture gesture(std::numeric_limits<float>::max(), std::numeric_limits<float>::denorm_min(), TouchBuilder::Pixels);
    gesture.steps.push_back({std::numeric_limits<quint32>::max(), {}});
    auto &points = gesture.steps.back().points;
    points.push_back(point(std::numeric_limits<qint32>::min(), std::numeric_limits<float>::lowest(),
                           std::numeric_limits<float>::min()));
    points.push_back(point(std::numeric_limits<qint32>::max(), 16777216, std::nextafter(1.0F, 2.0F)));
    while (points.size() < 20000) {
        const auto x = std::bit_cast<float>(random.generate());
        const auto y = std::bit_cast<float>(random.generate());
        if (std::isfinite(x) && std::isfinite(y))
            points.push_back(point(static_cast<qint32>(random.generate()), x, y));
    }
    QString error;
    const auto read = Gesture::fromXml(gesture.toXml(" ", 0), &error);
    ASSERT_TRUE(read) << qPrintable(error);
    EXPECT_EQ(*read, gesture);
    for (std::size_t i = 0; i < points.size(); ++i) {
        ASSERT_EQ(std::bit_cast<quint32>(read->steps[0].points[i].x), std::bit_cast<quint32>(points[i].x)) << i;
        ASSERT_EQ(std::bit_cast<quint32>(read->steps[0].points[i].y), std::bit_cast<quint32>(points[i].y)) << i;
    }
}

TEST(TouchXml, mayHaveADeclarationCommentsAndWhiteSpace)
{
    const QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- a -->\n"
        + gestureXml(goodGesture, "<step time='0' ><!-- b -->\r\n\t", goodPoint) + "\n<!-- c --><?d e?>\n";
    QString error;
    const auto read = Gesture::fromXml(xml, &error);
    ASSERT_TRUE(read) << qPrintable(error);
    ASSERT_EQ(read->steps.size(), 1U);
    EXPECT_EQ(read->steps[0].points.size(), 1U);
}

TEST(TouchXml, takesThePointTagsInTheirLongFormToo)
{
    const auto read = Gesture::fromXml(gestureXml(goodGesture, goodStep,
                                                  R"(<point id="1" x="1" y="2" pressure="1" size="-1"></point>)"));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->steps[0].points[0].y, 2);
}

TEST(TouchXml, withAnotherRootIsRefused)
{
    EXPECT_EQ(errorOf("<touch/>"), "line 1, column 1: expected <gesture>, found <touch>");
    EXPECT_EQ(errorOf("<!-- a -->\n <step time=\"0\"/>"), "line 2, column 2: expected <gesture>, found <step>");
    EXPECT_EQ(errorOf("<g:gesture width=\"1\" height=\"1\" unit=\"pixels\"/>"),
              "line 1, column 1: expected <gesture>, found <g:gesture>");
}

TEST(TouchXml, withOtherElementsIsRefused)
{
    EXPECT_EQ(errorOf(gestureXml(goodGesture, "<move time=\"0\">", goodPoint)),
              "line 2, column 1: expected <step>, found <move>");
    EXPECT_EQ(errorOf(gestureXml(goodGesture, goodStep, "<step time=\"1\"/>")),
              "line 3, column 1: expected <point>, found <step>");
    EXPECT_EQ(errorOf(gestureXml(goodGesture, goodStep,
                                 R"(<point id="1" x="1" y="2" pressure="1" size="-1"><a/></point>)")),
              "line 3, column 50: expected nothing in <point>, found <a>");
}

TEST(TouchXml, withTextIsRefused)
{
    EXPECT_EQ(errorOf(gestureXml(goodGesture, goodStep, "hello")), "line 2, column 16: expected no text in <step>");
    EXPECT_EQ(errorOf(gestureXml(goodGesture, goodStep,
                                 R"(<point id="1" x="1" y="2" pressure="1" size="-1">7</point>)")),
              "line 3, column 50: expected no text in <point>");
}

TEST(TouchXml, withADocumentTypeIsRefused)
{
    EXPECT_EQ(errorOf("<!DOCTYPE gesture [<!ENTITY a \"b\">]><gesture width=\"1\" height=\"1\" unit=\"pixels\"/>"),
              "line 1, column 1: a document type is not allowed");
}

TEST(TouchXml, withMissingAttributesIsRefused)
{
    EXPECT_EQ(errorOf("<gesture/>"), "line 1, column 1: <gesture> lacks the attribute \"width\"");
    EXPECT_EQ(errorOf("<gesture width=\"1\"/>"), "line 1, column 1: <gesture> lacks the attribute \"height\"");
    EXPECT_EQ(errorOf("<gesture width=\"1\" height=\"1\"/>"),
              "line 1, column 1: <gesture> lacks the attribute \"unit\"");
    EXPECT_EQ(errorOf(gestureXml(goodGesture, "<step>", goodPoint)),
              "line 2, column 1: <step> lacks the attribute \"time\"");
    const std::pair<const char *, const char *> points[] = {
        {"id", R"(<point x="1" y="2" pressure="1" size="-1"/>)"},
        {"x", R"(<point id="1" y="2" pressure="1" size="-1"/>)"},
        {"y", R"(<point id="1" x="1" pressure="1" size="-1"/>)"},
        {"pressure", R"(<point id="1" x="1" y="2" size="-1"/>)"},
        {"size", R"(<point id="1" x="1" y="2" pressure="1"/>)"},
    };
    for (const auto &[name, tag] : points) {
        EXPECT_EQ(errorOf(gestureXml(goodGesture, goodStep, tag)),
                  std::string("line 3, column 1: <point> lacks the attribute \"") + name + '"');
    }
}

TEST(TouchXml, withOtherAttributesIsRefused)
{
    EXPECT_EQ(errorOf("<gesture width=\"1\" height=\"1\" unit=\"pixels\" speed=\"1\"/>"),
              "line 1, column 1: <gesture> has no attribute \"speed\"");
    EXPECT_EQ(errorOf("<gesture width=\"1\" height=\"1\" unit=\"pixels\" xmlns=\"urn:a\"/>"),
              "line 1, column 1: <gesture> has no attribute \"xmlns\"");
    EXPECT_NE(errorOf("<gesture width=\"1\" width=\"1\" height=\"1\" unit=\"pixels\"/>"), "");
}

TEST(TouchXml, inAnotherUnitIsRefused)
{
    EXPECT_EQ(errorOf("<gesture width=\"1\" height=\"1\" unit=\"inches\"/>"),
              "line 1, column 1: expected \"pixels\" for \"unit\" of <gesture>, found \"inches\"");
    const Gesture unknown(1, 1, static_cast<TouchBuilder::Unit>(3));
    EXPECT_EQ(errorOf(unknown.toXml("", 0)),
              "line 1, column 1: expected \"pixels\" for \"unit\" of <gesture>, found \"3\"");
}

TEST(TouchXml, withNumbersThatAreNoneIsRefused)
{
    for (const char *number : {"", " 1", "1 ", "+1", "1,5", "0x10", "one", "nan", "inf", "-inf", "1e39", "-1e39",
                               "1e-60", "1e", "--1", "%1", "१"}) {
        const QByteArray xml = QByteArray("<gesture width=\"") + number + "\" height=\"1\" unit=\"pixels\"/>";
        EXPECT_EQ(errorOf(xml),
                  std::string("line 1, column 1: expected a finite 32-bit number for \"width\" of <gesture>, found \"")
                      + number + '"');
    }
    for (const char *number : {"", "-1", "4294967296", "1.0", "1e3", "+0", "ten"}) {
        const QByteArray step = QByteArray("<step time=\"") + number + "\">";
        EXPECT_EQ(errorOf(gestureXml(goodGesture, step, goodPoint)),
                  std::string("line 2, column 1: expected an unsigned 32-bit integer for \"time\" of <step>, found \"")
                      + number + '"');
    }
    for (const char *number : {"2147483648", "-2147483649", "1.5", ""}) {
        const QByteArray tag = QByteArray("<point id=\"") + number + R"(" x="1" y="2" pressure="1" size="-1"/>)";
        EXPECT_EQ(errorOf(gestureXml(goodGesture, goodStep, tag)),
                  std::string("line 3, column 1: expected a 32-bit integer for \"id\" of <point>, found \"") + number
                      + '"');
    }
}

TEST(TouchXml, ofNumbersThatAreNotFiniteIsRefused)
{
    for (const float number : {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                               std::numeric_limits<float>::quiet_NaN()}) {
        Gesture gesture(1, 1, TouchBuilder::Pixels);
        gesture.steps.push_back({0, {point(1, number, 0)}});
        EXPECT_NE(errorOf(gesture.toXml("", 0)).find("expected a finite 32-bit number for \"x\" of <point>"),
                  std::string::npos);
    }
}

TEST(TouchXml, thatIsCutAnywhereIsRefused)
{
    const QByteArray xml = pinch().toXml("  ", 0).trimmed();
    for (qsizetype size = 0; size < xml.size(); ++size) {
        QString error;
        ASSERT_FALSE(Gesture::fromXml(xml.first(size), &error)) << size;
        ASSERT_TRUE(error.startsWith(QStringLiteral("line "))) << size << qPrintable(error);
    }
}

TEST(TouchXml, withAnythingBehindItsEndIsRefused)
{
    const QByteArray xml = pinch().toXml("", 0);
    EXPECT_NE(errorOf(xml + xml), "");
    EXPECT_NE(errorOf(xml + "text"), "");
    EXPECT_NE(errorOf("text" + xml), "");
}

TEST(TouchXml, thatIsNoXmlIsRefused)
{
    for (const char *text : {"", " ", "{}", "<", "<gesture", "\xff\xfe\x00", "<gesture></step></gesture>", "&amp;"})
        EXPECT_EQ(errorOf(text).rfind("line ", 0), 0U) << text;
    EXPECT_NE(errorOf(QByteArray(1000, '\0')), "");
    EXPECT_NE(errorOf(QByteArrayLiteral("<gesture>").repeated(100000)), "");
}

TEST(TouchXml, isReadWhateverItsSize)
{
    Gesture gesture(10, 10, TouchBuilder::Pixels);
    for (quint32 i = 0; i < 30000; ++i)
        gesture.steps.push_back({i, {point(1, static_cast<float>(i), 1)}});
    const auto read = Gesture::fromXml(gesture.toXml("  ", 0));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, gesture);
}

TEST(TouchXml, damagedAtRandomIsReadOrRefusedAndNeverHarmful)
{
    QRandomGenerator random(5);
    const QByteArray xml = pinch().toXml("  ", 0);
    int refused = 0;
    for (int i = 0; i < 20000; ++i) {
        QByteArray damaged = xml;
        for (int changes = random.bounded(1, 4); changes > 0; --changes)
            damaged[random.bounded(static_cast<int>(damaged.size()))] = static_cast<char>(random.bounded(256));
        QString error;
        const auto read = Gesture::fromXml(damaged, &error);
        ASSERT_EQ(read.has_value(), error.isEmpty());
        refused += !read;
    }
    EXPECT_GT(refused, 10000);
}

} // namespace
