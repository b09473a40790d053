#include "translationfixture.h"

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace VantleTest {

namespace {

constexpr qint32 Mark = -7777;

} // namespace

SyntheticEvent markedRecord()
{
    SyntheticEvent record;
    record.type = SyntheticEvent::Invalid;
    record.mouseEventType = static_cast<SyntheticEvent::MouseEventType>(Mark);
    record.button = static_cast<MouseButton::Value>(Mark);
    record.globalX = record.globalY = Mark;
    record.wheelDeltaX = record.wheelDeltaY = Mark;
    record.inputMethodText = "marked input method text";
    record.keyEventType = static_cast<SyntheticEvent::KeyEventType>(Mark);
    record.key = Mark;
    record.modifiers = static_cast<Modifier::Value>(Mark);
    record.text = "marked text";
    record.oldWindowX = record.oldWindowY = record.windowX = record.windowY = Mark;
    record.windowWidth = record.windowHeight = record.windowState = Mark;
    record.flickState = static_cast<SyntheticEvent::FlickState>(Mark);
    record.contentX = record.contentY = Mark;
    record.touch.touchEventType = static_cast<SyntheticEvent::TouchEventType>(Mark);
    record.touch.primaryIndex = 7777;
    record.touch.objectName = "marked window";
    record.touch.areaWidth = record.touch.areaHeight = Mark;
    record.objectName = "marked object";
    record.objectClass = nullptr;
    record.ready = false;
    record.x = record.y = Mark;
    record.timestamp = 7777;
    return record;
}

void expectSameRecord(const SyntheticEvent &actual, const SyntheticEvent &expected)
{
    EXPECT_EQ(actual.type, expected.type);
    EXPECT_EQ(actual.mouseEventType, expected.mouseEventType);
    EXPECT_EQ(actual.button, expected.button);
    EXPECT_EQ(actual.globalX, expected.globalX);
    EXPECT_EQ(actual.globalY, expected.globalY);
    EXPECT_EQ(actual.wheelDeltaX, expected.wheelDeltaX);
    EXPECT_EQ(actual.wheelDeltaY, expected.wheelDeltaY);
    EXPECT_EQ(actual.inputMethodText, expected.inputMethodText);
    EXPECT_EQ(actual.keyEventType, expected.keyEventType);
    EXPECT_EQ(actual.key, expected.key);
    EXPECT_EQ(actual.modifiers, expected.modifiers);
    EXPECT_EQ(actual.text, expected.text);
    EXPECT_EQ(actual.oldWindowX, expected.oldWindowX);
    EXPECT_EQ(actual.oldWindowY, expected.oldWindowY);
    EXPECT_EQ(actual.windowX, expected.windowX);
    EXPECT_EQ(actual.windowY, expected.windowY);
    EXPECT_EQ(actual.windowWidth, expected.windowWidth);
    EXPECT_EQ(actual.windowHeight, expected.windowHeight);
    EXPECT_EQ(actual.windowState, expected.windowState);
    EXPECT_EQ(actual.flickObject, expected.flickObject);
    EXPECT_EQ(actual.flickState, expected.flickState);
    EXPECT_EQ(actual.contentX, expected.contentX);
    EXPECT_EQ(actual.contentY, expected.contentY);
    EXPECT_EQ(actual.touch.touchEventType, expected.touch.touchEventType);
    EXPECT_EQ(actual.touch.points.size(), expected.touch.points.size());
    EXPECT_EQ(actual.touch.primaryIndex, expected.touch.primaryIndex);
    EXPECT_EQ(actual.touch.object, expected.touch.object);
    EXPECT_EQ(actual.touch.objectName, expected.touch.objectName);
    EXPECT_EQ(actual.touch.areaWidth, expected.touch.areaWidth);
    EXPECT_EQ(actual.touch.areaHeight, expected.touch.areaHeight);
    EXPECT_EQ(actual.object, expected.object);
    EXPECT_EQ(actual.ready, expected.ready);
    EXPECT_EQ(actual.objectName, expected.objectName);
    EXPECT_EQ(actual.objectClass, expected.objectClass);
    EXPECT_EQ(actual.x, expected.x);
    EXPECT_EQ(actual.y, expected.y);
    EXPECT_EQ(actual.timestamp, expected.timestamp);
}

Translation::Translation() : item(new QQuickItem(window->contentItem()))
{
    setupQtQuick();
    item->setObjectName(QStringLiteral("target"));
    item->setPosition(QPointF(20, 30));
    item->setSize(QSizeF(100, 80));
}

void Translation::SetUp()
{
    window->setTitle(QStringLiteral("Scene"));
    window->setGeometry(100, 50, 200, 200);
    window->show();
    window->requestActivate();
    ASSERT_TRUE(waitUntil([this] {
        return window->isExposed() && window->isActive() && window->contentItem()->size() == QSizeF(200, 200);
    }));
}

void Translation::expectRefused(QObject *receiver, QEvent &event)
{
    SyntheticEvent record = markedRecord();
    const SyntheticEvent before = record;
    EXPECT_FALSE(qtEventToSyntheticEvent(receiver, &event, &record));
    expectSameRecord(record, before);
}

void Translation::giveFocusTo(QQuickItem *focusItem)
{
    focusItem->forceActiveFocus();
    ASSERT_EQ(window->activeFocusItem(), focusItem);
}

} // namespace VantleTest
