#include "wrappers/qt/readiness.h"

#include "hook/delegates.h"
#include "hook/inspector.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtGui/QWindow>

#include <memory>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

class TargetReadiness : public testing::Test
{
protected:
    TargetReadiness() { Inspector::self()->takeError(); }

    /// Whether the object can be acted on, with what the script was told.
    std::pair<bool, QString> ask(const SharedPtr<Object> &object, int x = -1, int y = -1,
                                 const InteractionDelegate **delegate = nullptr)
    {
        const bool ready = ensureValidVisibleAndReady(object, x, y, QStringLiteral("mouseClick"), delegate);
        return {ready, Inspector::self()->takeError()};
    }

    static std::pair<bool, QString> refused(const char *message) { return {false, QString::fromUtf8(message)}; }

    Application application;
};

} // namespace

TEST_F(TargetReadiness, NoObjectIsRefused)
{
    EXPECT_EQ(ask(nullptr), refused("Cannot mouseClick: no object was given"));
}

TEST_F(TargetReadiness, DeadObjectIsRefusedByItsType)
{
    auto window = std::make_unique<QWindow>();
    const SharedPtr<Object> object = wrapAndRegisterQObject(window.get());
    window.reset();
    EXPECT_EQ(ask(object), refused("Cannot mouseClick: the object of type QWindow does not exist any more"));
    EXPECT_EQ(ask(wrapAndRegisterQObject(nullptr)),
              refused("Cannot mouseClick: the object of type QObject does not exist any more"));
}

TEST_F(TargetReadiness, ObjectWithoutAnInteractionDelegateIsRefused)
{
    QObject plain;
    EXPECT_EQ(ask(wrapAndRegisterQObject(&plain)),
              refused("Cannot mouseClick: nobody can act on an object of type QObject"));
    EXPECT_EQ(ask(Inspector::self()->createInteger(1)),
              refused("Cannot mouseClick: nobody can act on an object of type int"));
}

TEST_F(TargetReadiness, ObjectThatIsNotReadyIsRefusedByNameWithTheReason)
{
    QWindow window;
    window.setObjectName(QStringLiteral("50%1 %2"));
    const SharedPtr<Object> object = wrapAndRegisterQObject(&window);
    const QString name = object->scriptName();
    ASSERT_FALSE(name.isEmpty());
    EXPECT_EQ(ask(object),
              std::pair(false,
                        QStringLiteral("Cannot mouseClick on ") + name
                            + QStringLiteral(": the window is not visible")));
    EXPECT_EQ(ask(object, 0, 7),
              std::pair(false,
                        QStringLiteral("Cannot mouseClick on ") + name
                            + QStringLiteral(" at (0, 7): the window is not visible")));
}

TEST_F(TargetReadiness, ReadyObjectIsAcceptedAndItsDelegateHandedOut)
{
    QWindow window;
    window.resize(50, 50);
    window.show();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return window.isExposed(); }));
    const SharedPtr<Object> object = wrapAndRegisterQObject(&window);
    const InteractionDelegate *delegate = nullptr;
    EXPECT_EQ(ask(object, -1, -1, &delegate), std::pair(true, QString()));
    EXPECT_EQ(delegate, DelegateFactory::self()->interactionDelegate(object->objectClass()));
    EXPECT_EQ(ask(object, 1000, 1000, nullptr), std::pair(true, QString()));
}

TEST_F(TargetReadiness, RefusalLeavesTheDelegateAlone)
{
    const InteractionDelegate *delegate = nullptr;
    QWindow hidden;
    EXPECT_FALSE(ask(wrapAndRegisterQObject(&hidden), -1, -1, &delegate).first);
    EXPECT_EQ(delegate, nullptr);
}
