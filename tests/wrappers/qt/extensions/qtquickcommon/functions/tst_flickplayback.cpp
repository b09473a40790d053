#include "wrappers/qt/extensions/qtquickcommon/functions/flickplayback.h"

#include "hook/inspector.h"
#include "silentlogger.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/flickmonitor.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickflickable_p.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Keeps what a flickable says, with the position at that moment.
class FlickableLog
{
public:
    explicit FlickableLog(QQuickFlickable *flickable)
    {
        const auto note = [this, flickable](const char *what) {
            return [this, flickable, what] {
                m_lines.push_back(std::string(what) + ' ' + std::to_string(static_cast<int>(flickable->contentX()))
                                  + '/' + std::to_string(static_cast<int>(flickable->contentY())));
            };
        };
        QObject::connect(flickable, &QQuickFlickable::movementStarted, flickable, note("started"));
        QObject::connect(flickable, &QQuickFlickable::contentXChanged, flickable, note("x"));
        QObject::connect(flickable, &QQuickFlickable::contentYChanged, flickable, note("y"));
        QObject::connect(flickable, &QQuickFlickable::movementEnded, flickable, note("ended"));
    }

    const std::vector<std::string> &lines() const { return m_lines; }

private:
    std::vector<std::string> m_lines;
};

class FlickPlayback : public testing::Test
{
protected:
    FlickPlayback()
    {
        setupQtQuick();
        Inspector::self()->takeError();
        flickable->setParentItem(window.contentItem());
        flickable->setSize(QSizeF(100, 100));
        flickable->setContentX(10);
        flickable->setContentY(20);
    }

    void show()
    {
        window.resize(200, 200);
        window.show();
        ASSERT_TRUE(VantleTest::waitUntil([this] { return window.isExposed(); }));
    }

    SharedPtr<Object> call(const SharedPtr<Object> &object, int dx, int dy)
    {
        Inspector *const inspector = Inspector::self();
        return flickFunction({object, inspector->createInteger(dx), inspector->createInteger(dy)}, nullptr);
    }

    SharedPtr<Object> wrapped() const { return wrapAndRegisterQObject(flickable.get()); }

    VantleTest::SilentLogger logger;
    Application application;
    QQuickWindow window;
    std::unique_ptr<QQuickFlickable> flickable = std::make_unique<QQuickFlickable>();
};

/// Notes the calls of its setters.
class SetterFlickable : public QQuickFlickable
{
public:
    void setContentX(qreal position) override
    {
        calls.push_back("x " + std::to_string(static_cast<int>(position)));
        QQuickFlickable::setContentX(position);
    }
    void setContentY(qreal position) override
    {
        calls.push_back("y " + std::to_string(static_cast<int>(position)));
        QQuickFlickable::setContentY(position);
    }

    std::vector<std::string> calls;
};

} // namespace

TEST_F(FlickPlayback, MovesTheContentBetweenTheTwoSignals)
{
    const FlickableLog log(flickable.get());
    EXPECT_EQ(flickQuickItem(wrapped(), 5, -20), QString());
    EXPECT_THAT(log.lines(), ElementsAre("started 10/20", "x 15/20", "y 15/0", "ended 15/0"));
}

TEST_F(FlickPlayback, ByNothingEmitsBothSignalsAndChangesNothing)
{
    const FlickableLog log(flickable.get());
    EXPECT_EQ(flickQuickItem(wrapped(), 0, 0), QString());
    EXPECT_THAT(log.lines(), ElementsAre("started 10/20", "ended 10/20"));
}

TEST_F(FlickPlayback, UsesTheVirtualSettersAlsoForADistanceOfNothing)
{
    SetterFlickable special;
    EXPECT_EQ(flickQuickItem(wrapAndRegisterQObject(&special), 0, 7), QString());
    EXPECT_THAT(special.calls, ElementsAre("x 0", "y 7"));
}

TEST_F(FlickPlayback, NeitherBoundsNorDirectionHoldTheContentBack)
{
    flickable->setContentWidth(50);
    flickable->setFlickableDirection(QQuickFlickable::VerticalFlick);
    flickable->setContentX(10);
    flickable->setContentY(20);
    EXPECT_EQ(flickQuickItem(wrapped(), 5000, -3000), QString());
    EXPECT_EQ(flickable->contentX(), 5010);
    EXPECT_EQ(flickable->contentY(), -2980);
}

TEST_F(FlickPlayback, KeepsFractionsOfThePosition)
{
    flickable->setContentY(0.25);
    EXPECT_EQ(flickQuickItem(wrapped(), 0, -2), QString());
    EXPECT_EQ(flickable->contentY(), -1.75);
}

TEST_F(FlickPlayback, LargestDistancesDoNotOverflow)
{
    EXPECT_EQ(flickQuickItem(wrapped(), std::numeric_limits<int>::max(), std::numeric_limits<int>::min()), QString());
    EXPECT_EQ(flickable->contentX(), 10.0 + std::numeric_limits<int>::max());
    EXPECT_EQ(flickable->contentY(), 20.0 + std::numeric_limits<int>::min());
}

TEST_F(FlickPlayback, IsSeenByAMonitorThatWatches)
{
    struct Observer : FlickObserver
    {
        virtual ~Observer() = default;
        void flickStarted(QQuickItem *, const QPointF &position, QQuickItem *) override { started = position; }
        void flickEnded(QQuickItem *, const QPointF &position, QQuickItem *) override { ended = position; }
        QPointF started;
        QPointF ended;
    } observer;
    FlickMonitor monitor;
    monitor.setObserver(&observer);
    monitor.watchFlickable(flickable.get(), flickable.get());
    flickQuickItem(wrapped(), 1, 2);
    EXPECT_EQ(observer.started, QPointF(10, 20));
    EXPECT_EQ(observer.ended, QPointF(11, 22));
    EXPECT_TRUE(monitor.watches().isEmpty());
}

TEST_F(FlickPlayback, RefusesNothing)
{
    EXPECT_EQ(flickQuickItem(nullptr, 1, 1), QStringLiteral("Don't know how to flick invalid object"));
}

TEST_F(FlickPlayback, RefusesADeadObject)
{
    const SharedPtr<Object> dead = wrapped();
    flickable.reset();
    EXPECT_EQ(flickQuickItem(dead, 1, 1),
              QStringLiteral("Don't know how to flick null-object of type QQuickFlickable"));
}

TEST_F(FlickPlayback, RefusesWhatIsNoFlickable)
{
    QQuickItem item;
    EXPECT_EQ(flickQuickItem(wrapAndRegisterQObject(&item), 1, 1),
              QStringLiteral("Don't know how to flick an object of type QQuickItem which is not a QtQuick Flickable"));
    EXPECT_EQ(flickQuickItem(wrapAndRegisterQObject(&window), 1, 1),
              QStringLiteral(
                  "Don't know how to flick an object of type QQuickWindow which is not a QtQuick Flickable"));
    EXPECT_EQ(flickQuickItem(Inspector::self()->createInteger(4), 1, 1),
              QStringLiteral("Don't know how to flick an object of type int which is not a QtQuick Flickable"));
}

TEST_F(FlickPlayback, FunctionFlicksAndGivesNoValue)
{
    show();
    EXPECT_EQ(call(wrapped(), 5, -20), Inspector::self()->voidResult());
    EXPECT_EQ(Inspector::self()->takeError(), QString());
    EXPECT_EQ(flickable->contentX(), 15);
    EXPECT_EQ(flickable->contentY(), 0);
}

TEST_F(FlickPlayback, FunctionRefusesWhatIsNotReadyAndLeavesItAlone)
{
    const FlickableLog log(flickable.get());
    EXPECT_TRUE(call(wrapped(), 5, 5).isNull());
    const QString error = Inspector::self()->takeError();
    EXPECT_TRUE(error.startsWith(QStringLiteral("Cannot flick on "))) << error.toStdString();
    EXPECT_TRUE(error.endsWith(QStringLiteral(": the window is not visible"))) << error.toStdString();
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(FlickPlayback, FunctionRefusesNothingAndDeadObjectsOnce)
{
    EXPECT_TRUE(call(nullptr, 5, 5).isNull());
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("Cannot flick: no object was given"));
    const SharedPtr<Object> dead = wrapped();
    flickable.reset();
    EXPECT_TRUE(call(dead, 5, 5).isNull());
    EXPECT_EQ(Inspector::self()->takeError(),
              QStringLiteral("Cannot flick: the object of type QQuickFlickable does not exist any more"));
    EXPECT_TRUE(flickFunction({}, nullptr).isNull());
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("Cannot flick: no object was given"));
}

TEST_F(FlickPlayback, FunctionReportsAnItemThatIsNoFlickable)
{
    show();
    QQuickItem item(window.contentItem());
    EXPECT_TRUE(call(wrapAndRegisterQObject(&item), 5, 5).isNull());
    EXPECT_EQ(Inspector::self()->takeError(),
              QStringLiteral("Don't know how to flick an object of type QQuickItem which is not a QtQuick Flickable"));
}

class FlickableDestroyedByPlayback
    : public FlickPlayback
    , public testing::WithParamInterface<void (QQuickFlickable::*)()>
{
};

TEST_P(FlickableDestroyedByPlayback, IsSurvived)
{
    const auto destroy = [this] { flickable.reset(); };
    QQuickFlickable *const f = flickable.get();
    // Not in a slot of a changed position, behind which the flickable's own work goes on.
    QObject::connect(f, GetParam(), qApp, destroy);
    EXPECT_EQ(flickQuickItem(wrapped(), 5, 5), QString());
    EXPECT_EQ(flickable, nullptr);
}

INSTANTIATE_TEST_SUITE_P(InASlot, FlickableDestroyedByPlayback,
                         testing::Values(&QQuickFlickable::movementStarted, &QQuickFlickable::movementEnded));
