#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"

#include <gtest/gtest.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickView>

#include <memory>

using Vantle::QtWrapper::qmlEngineForQuickWindow;

namespace {

void addPlainChildren(QQuickWindow *window, int count)
{
    for (int i = 0; i < count; ++i)
        (new QQuickItem(window->contentItem()))->setObjectName(QStringLiteral("plain"));
}

void addChildOfEngine(QQuickWindow *window, QQmlEngine *engine)
{
    auto *child = new QQuickItem(window->contentItem());
    QQmlEngine::setContextForObject(child, engine->rootContext());
}

TEST(WindowEngines, aNullWindowHasNone)
{
    EXPECT_EQ(qmlEngineForQuickWindow(nullptr), nullptr);
}

TEST(WindowEngines, aWindowThatQmlKnowsNothingOfHasNone)
{
    QQuickWindow window;
    EXPECT_EQ(qmlEngineForQuickWindow(&window), nullptr);
    addPlainChildren(&window, 3);
    EXPECT_EQ(qmlEngineForQuickWindow(&window), nullptr);
}

TEST(WindowEngines, aViewHasItsOwn)
{
    QQmlEngine other;
    QQuickView view;
    QQmlEngine::setContextForObject(&view, other.rootContext());
    addChildOfEngine(&view, &other);
    EXPECT_EQ(qmlEngineForQuickWindow(&view), view.engine());
}

TEST(WindowEngines, aViewThatLostItsEngineIsTreatedLikeAnyWindow)
{
    auto lost = std::make_unique<QQmlEngine>();
    QQuickView view(lost.get(), nullptr);
    ASSERT_EQ(qmlEngineForQuickWindow(&view), lost.get());
    lost.reset();
    ASSERT_EQ(view.engine(), nullptr);
    EXPECT_EQ(qmlEngineForQuickWindow(&view), nullptr);

    QQmlEngine ofChild;
    addPlainChildren(&view, 1);
    addChildOfEngine(&view, &ofChild);
    EXPECT_EQ(qmlEngineForQuickWindow(&view), &ofChild);

    QQmlEngine ofContext;
    QQmlEngine::setContextForObject(&view, ofContext.rootContext());
    EXPECT_EQ(qmlEngineForQuickWindow(&view), &ofContext);
}

TEST(WindowEngines, aWindowMadeByQmlHasTheOneThatMadeIt)
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nWindow {}", QUrl());
    const std::unique_ptr<QObject> window(component.create());
    ASSERT_NE(qobject_cast<QQuickWindow *>(window.get()), nullptr) << qPrintable(component.errorString());
    EXPECT_EQ(qmlEngineForQuickWindow(qobject_cast<QQuickWindow *>(window.get())), &engine);
}

TEST(WindowEngines, theTenthChildIsTheLastThatIsAsked)
{
    QQmlEngine engine;
    QQuickWindow nine;
    addPlainChildren(&nine, 9);
    addChildOfEngine(&nine, &engine);
    EXPECT_EQ(qmlEngineForQuickWindow(&nine), &engine);

    QQuickWindow ten;
    addPlainChildren(&ten, 10);
    addChildOfEngine(&ten, &engine);
    EXPECT_EQ(qmlEngineForQuickWindow(&ten), nullptr);
}

TEST(WindowEngines, theFirstChildWithAnEngineDecides)
{
    QQmlEngine first;
    QQmlEngine second;
    QQuickWindow window;
    addPlainChildren(&window, 1);
    addChildOfEngine(&window, &first);
    addChildOfEngine(&window, &second);
    EXPECT_EQ(qmlEngineForQuickWindow(&window), &first);
}

TEST(WindowEngines, onlyChildrenOfTheContentItemAreAsked)
{
    QQmlEngine engine;
    QQuickWindow window;
    auto *child = new QQuickItem(window.contentItem());
    QQmlEngine::setContextForObject(new QQuickItem(child), engine.rootContext());
    EXPECT_EQ(qmlEngineForQuickWindow(&window), nullptr);
}

} // namespace
