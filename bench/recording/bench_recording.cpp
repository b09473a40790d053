// What recording adds to an event, as users run it: the whole way through the
// agent's watcher, with the standard extension loaded, over scenes of growing
// size. The baselines are the delivery of the same events without recording, a
// bare walk that finds the item under the pointer, and the same recording in a
// window for which no extension is loaded.

#include "agent/recording/eventwatcher.h"
#include "hook/logger.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/functions/inputplayer.h"

#include <QtGui/QGuiApplication>
#include <QtGui/qpa/qwindowsysteminterface.h>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickView>

#include <benchmark/benchmark.h>

#include <memory>

using namespace Vantle::QtWrapper;

namespace {

enum Layout : qint64 {
    Flat,       // all items are siblings; the pointer is over the lowest
    Nested,     // each item holds ten; the pointer is over the lowest leaf
    Background, // all items are siblings; the pointer is beside them, on their parent
};

enum Extensions : qint64 {
    None,     // a window without QML engine
    Standard, // what comes with the library
};

constexpr int Side = 1000;
constexpr QPoint Pointer(0, 0);

class Item : public QQuickItem
{
public:
    explicit Item(QQuickItem *parent) : QQuickItem(parent) { setAcceptedMouseButtons(Qt::AllButtons); }

protected:
    void mousePressEvent(QMouseEvent *) override {}
    void mouseMoveEvent(QMouseEvent *) override {}
    void mouseReleaseEvent(QMouseEvent *) override {}
};

class Scene
{
public:
    Scene(Layout layout, qint64 itemCount, Extensions extensions = Standard)
        : owned(extensions == Standard ? std::make_unique<QQuickView>() : std::make_unique<QQuickWindow>())
        , window(*owned)
    {
        window.setTitle(QStringLiteral("Scene"));
        window.setGeometry(0, 0, Side, Side);
        root = new Item(window.contentItem());
        root->setSize(QSizeF(Side, Side));
        if (layout == Nested)
            nest(root, itemCount);
        else
            lineUp(itemCount, layout == Flat ? 0 : 1);
        window.show();
        while (!window.isExposed() || window.contentItem()->size().isEmpty())
            QCoreApplication::processEvents();
    }

    void deliver(QEvent::Type type)
    {
        // Qt drops moves to where the pointer is already.
        m_isAside = type == QEvent::MouseMove && !m_isAside;
        const QPointF local = QPointF(Pointer) + (m_isAside ? QPointF(0.25, 0.25) : QPointF());
        const bool isHeld = type != QEvent::MouseButtonRelease;
        QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::SynchronousDelivery>(
            &window, local, window.mapToGlobal(local), isHeld ? Qt::LeftButton : Qt::NoButton,
            type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, type);
    }

    void click()
    {
        deliver(QEvent::MouseButtonPress);
        deliver(QEvent::MouseButtonRelease);
    }

private:
    std::unique_ptr<QQuickWindow> owned;

public:
    QQuickWindow &window;

private:
    // The pointer's item comes first, so that a walk from the top meets it last.
    void lineUp(qint64 itemCount, int firstPlace)
    {
        for (qint64 i = 0; i < itemCount; ++i) {
            const auto place = static_cast<int>(i) + firstPlace;
            auto *item = new Item(root);
            item->setPosition(QPointF(place % Side, place / Side));
            item->setSize(QSizeF(1, 1));
        }
    }

    void nest(QQuickItem *parent, qint64 itemCount)
    {
        constexpr int fanOut = 10;
        for (int i = 0; i < fanOut && itemCount > 0; ++i) {
            const qint64 share = (itemCount + fanOut - i - 1) / (fanOut - i);
            auto *item = new Item(parent);
            item->setPosition(QPointF(i == 0 ? 0 : parent->width() * i / fanOut, 0));
            item->setSize(QSizeF(parent->width() / fanOut, parent->height()));
            nest(item, share - 1);
            itemCount -= share;
        }
    }

    QQuickItem *root;
    bool m_isAside = false;
};

QQuickItem *bareWalk(QQuickItem *item, const QPointF &point)
{
    const QList<QQuickItem *> children = item->childItems();
    for (auto it = children.crbegin(); it != children.crend(); ++it) {
        if (QQuickItem *hit = bareWalk(*it, (*it)->mapFromItem(item, point)))
            return hit;
    }
    return item->contains(point) ? item : nullptr;
}

std::unique_ptr<Scene> sceneOf(const benchmark::State &state)
{
    return std::make_unique<Scene>(static_cast<Layout>(state.range(0)), state.range(1));
}

std::unique_ptr<Scene> recordedSceneOf(const benchmark::State &state)
{
    return std::make_unique<Scene>(static_cast<Layout>(state.range(0)), state.range(1),
                                   static_cast<Extensions>(state.range(2)));
}

void bareWalkOnly(benchmark::State &state)
{
    const auto scene = sceneOf(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(bareWalk(scene->window.contentItem(), QPointF(Pointer)));
}

void deliverMove(benchmark::State &state)
{
    const auto scene = sceneOf(state);
    scene->deliver(QEvent::MouseButtonPress);
    for (auto _ : state)
        scene->deliver(QEvent::MouseMove);
    scene->deliver(QEvent::MouseButtonRelease);
}

/// Moves of a drag, delivery included.
void recordMove(benchmark::State &state)
{
    const auto scene = recordedSceneOf(state);
    Vantle::Agent::EventWatcher watcher;
    watcher.start();
    scene->deliver(QEvent::MouseButtonPress);
    for (auto _ : state)
        scene->deliver(QEvent::MouseMove);
    scene->deliver(QEvent::MouseButtonRelease);
    watcher.stop();
}

void deliverClick(benchmark::State &state)
{
    const auto scene = sceneOf(state);
    for (auto _ : state)
        scene->click();
}

/// Clicks that are written at once, as those that a script plays are; delivery included.
void recordClick(benchmark::State &state)
{
    const auto scene = recordedSceneOf(state);
    int statements = 0;
    Application::self()->setStatementHandler([&](const Vantle::EventData &) { ++statements; });
    Vantle::Agent::EventWatcher watcher;
    watcher.start();
    for (auto _ : state) {
        scene->click();
        InputPlayer::announceAction();
    }
    watcher.stop();
    Application::self()->setStatementHandler({});
    if (statements != state.iterations())
        state.SkipWithError("not every click became a statement");
}

/// One whole drag.
void recordDragOf(benchmark::State &state)
{
    Scene scene(Flat, 100);
    Vantle::Agent::EventWatcher watcher;
    watcher.start();
    for (auto _ : state) {
        scene.deliver(QEvent::MouseButtonPress);
        for (int64_t i = 0; i < state.range(0); ++i)
            scene.deliver(QEvent::MouseMove);
        scene.deliver(QEvent::MouseButtonRelease);
        InputPlayer::announceAction();
    }
    watcher.stop();
}

void scenes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"layout", "items"})->ArgsProduct({{Flat, Nested, Background}, {100, 1000, 10000}});
    benchmark->Unit(benchmark::kMicrosecond);
}

void recordedScenes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"layout", "items", "extension"});
    benchmark->ArgsProduct({{Flat, Nested, Background}, {100, 1000, 10000}, {None, Standard}});
    benchmark->Unit(benchmark::kMicrosecond);
}

class SilentLogger : public Vantle::Logger
{
    void info(const std::string &) override {}
    void warning(const std::string &) override {}
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}
};

BENCHMARK(bareWalkOnly)->Apply(scenes);
BENCHMARK(deliverMove)->Apply(scenes);
BENCHMARK(recordMove)->Apply(recordedScenes);
BENCHMARK(deliverClick)->Apply(scenes);
BENCHMARK(recordClick)->Apply(recordedScenes);
BENCHMARK(recordDragOf)->ArgName("moves")->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    // No screen is needed unless one is asked for.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
    // The standard extension of the build.
    qputenv("VANTLE_PREFIX", VANTLE_BUILD_PREFIX);
    const QGuiApplication gui(argc, argv);
    SilentLogger logger;
    Vantle::QtQuickCommon::setLogger(&logger);
    Application application;
    setupQtQuick();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
