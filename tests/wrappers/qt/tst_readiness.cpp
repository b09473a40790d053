#include "wrappers/qt/readiness.h"

#include "hook/delegates.h"
#include "support/waiting.h"
#include "support/warningguard.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtGui/QWindow>

#include <memory>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

void show(QWindow *window)
{
    window->setGeometry(10, 20, 200, 100);
    window->show();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return window->isExposed(); }));
}

} // namespace

TEST(WindowReadiness, NullWindowIsNotReady)
{
    EXPECT_EQ(windowNotReadyReason(nullptr), QStringLiteral("the window does not exist any more"));
}

TEST(WindowReadiness, HiddenWindowIsNotReady)
{
    QWindow window;
    EXPECT_EQ(windowNotReadyReason(&window), QStringLiteral("the window is not visible"));
    show(&window);
    EXPECT_EQ(windowNotReadyReason(&window), QString());
    window.hide();
    EXPECT_EQ(windowNotReadyReason(&window), QStringLiteral("the window is not visible"));
}

TEST(WindowReadiness, WindowInsideAHiddenOneIsNotExposed)
{
    QWindow parent;
    QWindow child(&parent);
    child.setVisible(true);
    ASSERT_TRUE(child.isVisible());
    EXPECT_EQ(windowNotReadyReason(&child), QStringLiteral("the window is not exposed on the screen"));
}

TEST(WindowReadiness, ModalWindowKeepsTheOthersFromInput)
{
    QWindow window;
    show(&window);
    QWindow question;
    question.setTitle(QStringLiteral("Save?"));
    question.setModality(Qt::ApplicationModal);
    show(&question);
    EXPECT_EQ(windowNotReadyReason(&window),
              QStringLiteral("the window is blocked by the modal window \"Save?\""));
    EXPECT_EQ(windowNotReadyReason(&question), QString());
    EXPECT_EQ(nativeQObject(modalWindowOver(&window)), &question);
    EXPECT_FALSE(modalWindowOver(&question));
    question.setTitle(QString());
    EXPECT_EQ(windowNotReadyReason(&window),
              QStringLiteral("the window is blocked by a modal window without a title"));
    question.hide();
    EXPECT_EQ(windowNotReadyReason(&window), QString());
    EXPECT_FALSE(modalWindowOver(&window));
    EXPECT_FALSE(modalWindowOver(nullptr));
}

TEST(WindowReadiness, WindowThatBelongsToTheModalOneIsReady)
{
    QWindow question;
    question.setModality(Qt::ApplicationModal);
    show(&question);
    QWindow list;
    list.setTransientParent(&question);
    show(&list);
    EXPECT_EQ(windowNotReadyReason(&list), QString());
}

TEST(WindowReadiness, WindowModalityBlocksTheOwnerOnly)
{
    QWindow owner;
    show(&owner);
    QWindow stranger;
    show(&stranger);
    QWindow question;
    question.setModality(Qt::WindowModal);
    question.setTransientParent(&owner);
    show(&question);
    EXPECT_NE(windowNotReadyReason(&owner), QString());
    EXPECT_EQ(windowNotReadyReason(&stranger), QString());
}

TEST(WindowDelegates, PlainWindowsHaveAPlaceButNoChildren)
{
    const Application application;
    QWindow window;
    show(&window);
    const SharedPtr<Object> object = wrapAndRegisterQObject(&window);
    const GeometryDelegate *const geometry = DelegateFactory::self()->geometryDelegate(object->objectClass());
    ASSERT_NE(geometry, nullptr);
    EXPECT_EQ(geometry->mapFromGlobal(object, 15, 30), QPoint(5, 10));
    EXPECT_EQ(geometry->mapFromGlobal(object, 0, 0), QPoint(-10, -20));
    EXPECT_EQ(geometry->screenRect(object), QRect(10, 20, 200, 100));
    EXPECT_FALSE(geometry->childAt(object, 5, 10));
    EXPECT_FALSE(geometry->focusChild(object));
}

TEST(WindowDelegates, WindowInAnotherIsPlacedOnTheScreen)
{
    // Windows inside others are placed right all the same.
    VantleTest::expectWarning(QStringLiteral("does not support setParent"));
    const Application application;
    QWindow parent;
    QWindow child(&parent);
    child.setGeometry(3, 4, 50, 60);
    child.show();
    show(&parent);
    const SharedPtr<Object> object = wrapAndRegisterQObject(&child);
    const GeometryDelegate *const geometry = DelegateFactory::self()->geometryDelegate(object->objectClass());
    EXPECT_EQ(geometry->screenRect(object), QRect(13, 24, 50, 60));
    EXPECT_EQ(geometry->mapFromGlobal(object, 13, 24), QPoint(0, 0));
}

TEST(WindowDelegates, ReadinessIsThatOfTheWindow)
{
    const Application application;
    QWindow window;
    const SharedPtr<Object> object = wrapAndRegisterQObject(&window);
    const InteractionDelegate *const interaction =
        DelegateFactory::self()->interactionDelegate(object->objectClass());
    ASSERT_NE(interaction, nullptr);
    EXPECT_EQ(interaction->notReadyReason(object), QStringLiteral("the window is not visible"));
    show(&window);
    EXPECT_EQ(interaction->notReadyReason(object), QString());
}

TEST(WindowDelegates, AreSafeForDeadAndNullWindows)
{
    const Application application;
    auto window = std::make_unique<QWindow>();
    const SharedPtr<Object> dead = wrapAndRegisterQObject(window.get());
    const Class *const type = dead->objectClass();
    window.reset();
    const GeometryDelegate *const geometry = DelegateFactory::self()->geometryDelegate(type);
    const InteractionDelegate *const interaction = DelegateFactory::self()->interactionDelegate(type);
    QObject other;
    for (const SharedPtr<Object> &object :
         {dead, SharedPtr<Object>(), wrapAndRegisterQObject(nullptr), wrapAndRegisterQObject(&other)}) {
        EXPECT_EQ(geometry->mapFromGlobal(object, 7, 8), QPoint(7, 8));
        EXPECT_FALSE(geometry->childAt(object, 0, 0));
        EXPECT_FALSE(geometry->focusChild(object));
        EXPECT_EQ(geometry->screenRect(object).width(), -1);
        EXPECT_EQ(geometry->screenRect(object).height(), -1);
        EXPECT_EQ(interaction->notReadyReason(object), QStringLiteral("the window does not exist any more"));
    }
}
