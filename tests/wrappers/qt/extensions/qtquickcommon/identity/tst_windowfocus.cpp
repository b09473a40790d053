#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"

#include "hook/delegates.h"
#include "support/compressionharness.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickRenderControl>
#include <QtQuick/QQuickWindow>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

/// The one class of items here that has an interaction delegate.
class ActionableItem : public QQuickItem
{
    Q_OBJECT
public:
    using QQuickItem::QQuickItem;
    QString reason;
};

class ReasonOfTheItem : public InteractionDelegate
{
public:
    QString notReadyReason(const SharedPtr<Object> &object) const override
    {
        return static_cast<ActionableItem *>(nativeQObject(object))->reason;
    }
};

class WindowFocus : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        DelegateFactory::self()->registerDelegate(classForMetaObject(&ActionableItem::staticMetaObject),
                                                  std::make_unique<ReasonOfTheItem>());
    }

    void SetUp() override
    {
        window.resize(100, 100);
        window.show();
        window.requestActivate();
        ASSERT_TRUE(VantleTest::waitUntil([this] { return window.isActive(); }));
    }

    template<typename Item>
    Item *addFocusItem(QQuickItem *parent)
    {
        auto *item = new Item(parent);
        item->forceActiveFocus();
        return item;
    }

    VantleTest::TestLogger logger;
    Application application;
    QQuickWindow window;
};

} // namespace

TEST_F(WindowFocus, IsNobodysWhereTheWindowWasNeverActive)
{
    QQuickWindow hidden;
    EXPECT_EQ(hidden.activeFocusItem(), nullptr);
    EXPECT_EQ(firstNonIgnoredFocusItem(&hidden), nullptr);
    EXPECT_TRUE(quickWindowFocusProxy(&hidden).isNull());
}

TEST_F(WindowFocus, IsNeverTheContentItems)
{
    ASSERT_EQ(window.activeFocusItem(), window.contentItem());
    EXPECT_EQ(firstNonIgnoredFocusItem(&window), nullptr);
    EXPECT_TRUE(quickWindowFocusProxy(&window).isNull());
}

TEST_F(WindowFocus, IsTheItemsThatHasActiveFocus)
{
    new ActionableItem(window.contentItem());
    auto *item = addFocusItem<ActionableItem>(window.contentItem());
    ASSERT_EQ(window.activeFocusItem(), item);
    EXPECT_EQ(firstNonIgnoredFocusItem(&window), item);

    const SharedPtr<Object> proxy = quickWindowFocusProxy(&window);
    ASSERT_FALSE(proxy.isNull());
    EXPECT_EQ(nativeQObject(proxy), item);
}

TEST_F(WindowFocus, IsTheInnermostItemsInNestedFocusScopes)
{
    auto *outer = new QQuickItem(window.contentItem());
    outer->setFlag(QQuickItem::ItemIsFocusScope);
    auto *inner = new QQuickItem(outer);
    inner->setFlag(QQuickItem::ItemIsFocusScope);
    auto *item = addFocusItem<ActionableItem>(inner);
    ASSERT_TRUE(outer->hasActiveFocus());
    EXPECT_EQ(firstNonIgnoredFocusItem(&window), item);
}

TEST_F(WindowFocus, MovesToTheScopeWhenTheItemInsideDies)
{
    auto *scope = new QQuickItem(window.contentItem());
    scope->setFlag(QQuickItem::ItemIsFocusScope);
    delete addFocusItem<ActionableItem>(scope);
    EXPECT_EQ(firstNonIgnoredFocusItem(&window), scope);
}

TEST_F(WindowFocus, ProxyIsNullForAnItemThatIsNotReady)
{
    auto *item = addFocusItem<ActionableItem>(window.contentItem());
    item->reason = QStringLiteral("busy");
    EXPECT_EQ(firstNonIgnoredFocusItem(&window), item);
    EXPECT_TRUE(quickWindowFocusProxy(&window).isNull());

    item->reason.clear();
    EXPECT_FALSE(quickWindowFocusProxy(&window).isNull());
}

TEST_F(WindowFocus, ProxyIsNullForAnItemWhoseClassHasNoInteractionDelegate)
{
    auto *item = addFocusItem<QQuickItem>(window.contentItem());
    EXPECT_EQ(firstNonIgnoredFocusItem(&window), item);
    EXPECT_TRUE(quickWindowFocusProxy(&window).isNull());
}

TEST(RenderWindow, IsTheWindowItselfWhereItRendersForItself)
{
    QQuickWindow window;
    QWindow *result = nullptr;
    QPoint offset(7, 7);
    quickRenderWindowFor(&window, &result, &offset);
    EXPECT_EQ(result, &window);
    EXPECT_EQ(offset, QPoint(0, 0));

    result = nullptr;
    quickRenderWindowFor(&window, &result, nullptr);
    EXPECT_EQ(result, &window);
}

namespace {

/// Renders into another window, or says that it has none while writing an offset.
class RedirectingControl : public QQuickRenderControl
{
public:
    explicit RedirectingControl(QWindow *target) : m_target(target) {}
    QWindow *renderWindow(QPoint *offset) override
    {
        if (offset)
            *offset = QPoint(30, 40);
        return m_target;
    }

private:
    QWindow *m_target;
};

} // namespace

TEST(RenderWindow, IsTheOneThatTheRenderControlNames)
{
    QWindow target;
    RedirectingControl control(&target);
    QQuickWindow window(&control);
    QWindow *result = nullptr;
    QPoint offset;
    quickRenderWindowFor(&window, &result, &offset);
    EXPECT_EQ(result, &target);
    EXPECT_EQ(offset, QPoint(30, 40));

    result = nullptr;
    quickRenderWindowFor(&window, &result, nullptr);
    EXPECT_EQ(result, &target);
}

TEST(RenderWindow, HasNoOffsetWhereTheRenderControlNamesNoWindow)
{
    RedirectingControl control(nullptr);
    QQuickWindow window(&control);
    QWindow *result = nullptr;
    QPoint offset;
    quickRenderWindowFor(&window, &result, &offset);
    EXPECT_EQ(result, &window);
    EXPECT_EQ(offset, QPoint(0, 0));
}

#include "tst_windowfocus.moc"
