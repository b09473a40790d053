// What it costs to name an item and to find it by its name, over scenes of
// growing size. The baselines are QObject::findChild, which compares a class
// and an object name, and bare recursive walks that read the same properties
// as the name in question: naming and lookup may grow with the scene like
// them, and not faster. What a move of the pointer asks for must not grow at all.

#include "hook/logger.h"
#include "hook/objectname.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemlookup.h"
#include "wrappers/qt/objectnamecache.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <benchmark/benchmark.h>

#include <memory>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

enum Layout : qint64 {
    Flat,   // all items are siblings
    Deep,   // each item holds the next
    Nested, // each item holds ten
};

class Scene
{
public:
    Scene(Layout layout, qint64 itemCount)
    {
        window.setTitle(QStringLiteral("Scene"));
        fill(window.contentItem(), layout, itemCount);
        last->setObjectName(QStringLiteral("last"));
    }
    ~Scene()
    {
        // From the leaves up: a deep scene is destroyed by recursion otherwise.
        while (!m_items.isEmpty())
            delete m_items.takeLast();
    }
    Q_DISABLE_COPY_MOVE(Scene)

    QList<QQuickItem *> roots() const { return window.contentItem()->childItems(); }

    QQuickWindow window;
    QQuickItem *last = nullptr; // in the order of the walk

private:
    void fill(QQuickItem *parent, Layout layout, qint64 itemCount)
    {
        constexpr int fanOut = 10;
        if (layout == Nested) {
            for (int i = 0; i < fanOut && itemCount > 0; ++i) {
                const qint64 share = (itemCount + fanOut - i - 1) / (fanOut - i);
                fill(add(parent), layout, share - 1);
                itemCount -= share;
            }
            return;
        }
        for (qint64 i = 0; i < itemCount; ++i) {
            QQuickItem *const item = add(parent);
            if (layout == Deep)
                parent = item;
        }
    }
    QQuickItem *add(QQuickItem *parent)
    {
        last = new QQuickItem(parent);
        last->setObjectName(QStringLiteral("item %1").arg(m_items.size()));
        m_items.append(last);
        return last;
    }

    QList<QQuickItem *> m_items;
};

std::unique_ptr<Scene> sceneOf(const benchmark::State &state)
{
    return std::make_unique<Scene>(static_cast<Layout>(state.range(0)), state.range(1));
}

ObjectName typeAndObjectName(const char *objectName)
{
    return ObjectName(QStringLiteral("Item[objectName=\"%1\"]").arg(QLatin1String(objectName)));
}

// Reads class and object name, and with `visible` that property by its name,
// as a lookup has to.
QQuickItem *bareWalk(QQuickItem *parent, const QString &type, const QString &objectName, bool visible)
{
    const QList<QQuickItem *> children = parent->childItems();
    for (QQuickItem *child : children) {
        const bool isShown = !visible || child->property("visible").toString() == QLatin1String("true");
        const bool isNamed = child->objectName() == objectName;
        if (QLatin1String(child->metaObject()->className()) == type && isNamed && isShown)
            return child;
        if (QQuickItem *const hit = bareWalk(child, type, objectName, visible))
            return hit;
    }
    return nullptr;
}

void findChild(benchmark::State &state)
{
    const auto scene = sceneOf(state);
    const QString name = QStringLiteral("last");
    for (auto _ : state)
        benchmark::DoNotOptimize(scene->window.contentItem()->findChild<QQuickItem *>(name));
}

void bareWalkOf(benchmark::State &state, bool visible)
{
    const auto scene = sceneOf(state);
    const QString type = QStringLiteral("QQuickItem");
    const QString name = QStringLiteral("last");
    for (auto _ : state)
        benchmark::DoNotOptimize(bareWalk(scene->window.contentItem(), type, name, visible));
}

void lookUp(benchmark::State &state, const ObjectName &name, bool isThere)
{
    const auto scene = sceneOf(state);
    for (auto _ : state) {
        QList<QString> mismatched;
        const SharedPtr<Object> object = findQuickItem(scene->roots(), name, mismatched);
        if (bool(object) != isThere)
            state.SkipWithError("the lookup went wrong");
    }
}

void lookUpText(benchmark::State &state)
{
    const auto scene = sceneOf(state);
    const QString text = QStringLiteral("Window[title=\"Scene\"] Item[objectName=\"last\"]:visible");
    for (auto _ : state) {
        if (nativeQObject(Application::self()->objectForName(text)) != scene->last)
            state.SkipWithError("the lookup went wrong");
    }
}

void name(benchmark::State &state)
{
    const auto scene = sceneOf(state);
    const SharedPtr<Object> object = wrapAndRegisterQObject(scene->last);
    for (auto _ : state)
        benchmark::DoNotOptimize(object->scriptName());
}

void nameForMove(benchmark::State &state)
{
    const auto scene = sceneOf(state);
    const SharedPtr<Object> object = wrapAndRegisterQObject(scene->last);
    for (auto _ : state) {
        const UnverifiedNames unverified;
        benchmark::DoNotOptimize(object->scriptName());
    }
}

// The point is over no item, so that all of them are asked.
const QPointF nowhere(-1, -1);

QQuickItem *bareItemAt(QQuickItem *item, const QPointF &point)
{
    const QList<QQuickItem *> children = item->childItems();
    for (auto it = children.crbegin(); it != children.crend(); ++it) {
        if (QQuickItem *hit = bareItemAt(*it, (*it)->mapFromItem(item, point)))
            return hit;
    }
    return item->contains(point) ? item : nullptr;
}

void bareHitTest(benchmark::State &state)
{
    const auto scene = sceneOf(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(bareItemAt(scene->window.contentItem(), nowhere));
}

void hitTest(benchmark::State &state)
{
    const auto scene = sceneOf(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(recursiveQuickItemAt(scene->window.contentItem(), nowhere));
}

class QuietLogger : public Logger
{
    void info(const std::string &) override {}
    void warning(const std::string &) override {}
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}
};

void scenes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"layout", "items"})->ArgsProduct({{Flat, Deep, Nested}, {1000, 10000}});
    benchmark->Unit(benchmark::kMicrosecond);
}

} // namespace

BENCHMARK(findChild)->Apply(scenes);
BENCHMARK_CAPTURE(bareWalkOf, typeAndObjectName, false)->Apply(scenes);
BENCHMARK_CAPTURE(lookUp, hitAtTheEnd, typeAndObjectName("last"), true)->Apply(scenes);
BENCHMARK_CAPTURE(lookUp, miss, typeAndObjectName("nobody"), false)->Apply(scenes);
BENCHMARK_CAPTURE(bareWalkOf, typeObjectNameAndVisible, true)->Apply(scenes);
BENCHMARK(lookUpText)->Apply(scenes);
BENCHMARK(name)->Apply(scenes);
BENCHMARK(nameForMove)->Apply(scenes);
BENCHMARK(bareHitTest)->Apply(scenes);
BENCHMARK(hitTest)->Apply(scenes);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication qtApplication(argc, argv);
    QuietLogger logger;
    QtQuickCommon::setLogger(&logger);
    Application application;
    setupQtQuick();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
