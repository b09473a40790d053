#include "hook/class.h"
#include "hook/inspector.h"
#include "support/compressionharness.h"
#include "support/compressionobjects.h"
#include "support/syntheticevents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;

namespace {

/// Counts what reaches it: with "QQuickItem" unknown there is no harness to do that.
class Sink : public StatementSink
{
public:
    explicit Sink(std::vector<Statement> *target) : m_target(target) {}
    ~Sink() override { *m_target = written; }

private:
    std::vector<Statement> *m_target;
};

} // namespace

TEST(LateClasses, withoutTheClassOfItemsEveryObjectIsTreatedLikeOne)
{
    ASSERT_EQ(Inspector::self()->classByName(QStringLiteral("QQuickItem")), nullptr);
    std::vector<Statement> written;
    TestSettings settings;
    {
        EventCompressor compressor(new Sink(&written), &settings);
        const TestObjectPtr widget = makeObject("widget", widgetClass());
        compressor.eatEvent(mousePress(widget, {10, 20}, 1000));
        compressor.eatEvent(mouseMove(widget, {20, 20}, 1010));
        compressor.eatEvent(mouseRelease(widget, {50, 20}, 1020));
        compressor.eatEvent(mousePress(widget, {10, 20}, 2000));
        compressor.eatEvent(mouseRelease(widget, {10, 20}, 9000));
        compressor.finishCompression();
        compressor.resetInput();
    }
    ASSERT_EQ(written.size(), 2u);
    EXPECT_EQ(written[0].toText(), "mouseDrag widget 10/20 30/0 LeftButton None @1000");
    EXPECT_EQ(written[1].toText(), "mouseClick widget (TestWidget) 10/20 LeftButton None long @2000");
}

TEST(LateClasses, webContentIsRefusedFromTheMomentThatItsClassIsKnown)
{
    const QString name = QStringLiteral("HTML_Object");
    ASSERT_EQ(Inspector::self()->classByName(name), nullptr);
    // Classes live as long as the process.
    static const auto *const htmlObject = new Class(name);
    static const auto *const htmlLink = new Class(QStringLiteral("HTML_Link"), htmlObject);
    const TestObjectPtr object = makeObject("object", htmlObject);
    const TestObjectPtr link = makeObject("link", htmlLink);
    TestLogger logger;
    CompressionHarness harness;
    harness.compressor.setDebugLevel(1);

    harness.eat(inputMethod(link, "a", 1000));
    EXPECT_THAT(harness.takeStatements(), testing::SizeIs(1));

    Inspector::self()->registerClass(htmlObject);
    logger.lines.clear();
    harness.eat(inputMethod(link, "a", 1000));
    harness.eat(inputMethod(object, "a", 1000));
    EXPECT_THAT(harness.takeStatements(), testing::IsEmpty());
    EXPECT_EQ(harness.queued(), 0u);
    EXPECT_THAT(logger.lines, testing::IsEmpty());

    // A refused event disturbs no pattern, and an event without a class is not refused.
    const TestObjectPtr item = makeObject("item", itemClass());
    harness.eat(mousePress(item, {1, 2}, 1000));
    harness.eat(mousePress(link, {1, 2}, 1010));
    EXPECT_EQ(harness.queued(), 1u);
    SyntheticEvent classless = inputMethod(item, "b", 1020);
    classless.objectClass = nullptr;
    harness.flush();
    harness.eat(classless);
    EXPECT_THAT(harness.takeStatements(), testing::SizeIs(1));
}
