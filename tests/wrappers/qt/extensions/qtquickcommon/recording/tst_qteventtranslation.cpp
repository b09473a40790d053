#include "hook/class.h"
#include "translationfixture.h"

#include <QtGui/QInputMethodEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using VantleTest::Translation;

namespace {

class KeyEvent : public QKeyEvent
{
public:
    KeyEvent(Type type, int key, Qt::KeyboardModifiers modifiers, const QString &text, quint64 timestamp)
        : QKeyEvent(type, key, modifiers, text)
    {
        setTimestamp(timestamp);
    }
};

/// The key that types a plain "a".
class PlainA : public KeyEvent
{
public:
    PlainA(Type type, quint64 timestamp) : KeyEvent(type, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"), timestamp) {}
};

} // namespace

TEST_F(Translation, PressIsRecordedAgainstTheItemUnderThePointer)
{
    QMouseEvent event = mouseEvent(QEvent::MouseButtonPress, 25, 40);
    const QPoint global = event.globalPosition().toPoint();
    expectRecord(window.get(), event, item, [&](SyntheticEvent *expected) {
        expected->type = SyntheticEvent::Mouse;
        expected->mouseEventType = SyntheticEvent::Press;
        expected->button = MouseButton::LeftButton;
        expected->globalX = global.x();
        expected->globalY = global.y();
        expected->x = 5;
        expected->y = 10;
    });
}

TEST_F(Translation, ReleaseCarriesTheReleasedButton)
{
    QMouseEvent event = mouseEvent(QEvent::MouseButtonRelease, 25, 40, Qt::RightButton, Qt::NoButton);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(result.mouseEventType, SyntheticEvent::Release);
    EXPECT_EQ(result.button, MouseButton::RightButton);
}

TEST_F(Translation, PressBesideTheItemsIsRecordedAgainstTheWindow)
{
    QMouseEvent event = mouseEvent(QEvent::MouseButtonPress, 190, 5);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(recordedObject(), window.get());
    EXPECT_EQ(result.x, 190);
    EXPECT_EQ(result.y, 5);
}

TEST_F(Translation, PressOutsideTheWindowIsRecordedAgainstTheWindow)
{
    QMouseEvent event = mouseEvent(QEvent::MouseButtonRelease, -30, 400);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(recordedObject(), window.get());
    EXPECT_EQ(result.x, -30);
    EXPECT_EQ(result.y, 400);
}

TEST_F(Translation, GlobalPositionIsRoundedToTheNearestPixel)
{
    const QPointF global(10.5, -10.4);
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(), QPointF(), global, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(result.globalX, 11);
    EXPECT_EQ(result.globalY, -10);
}

TEST_F(Translation, UnknownButtonsAreRecordedAsNone)
{
    QMouseEvent event = mouseEvent(QEvent::MouseButtonPress, 25, 40, Qt::BackButton, Qt::BackButton);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(result.button, MouseButton::None);
}

TEST_F(Translation, MoveWithoutAHeldButtonIsRefused)
{
    QMouseEvent event = mouseEvent(QEvent::MouseMove, 25, 40, Qt::NoButton, Qt::NoButton);
    expectRefused(window.get(), event);
}

TEST_F(Translation, MoveWithAHeldButtonIsRecordedWithoutAButton)
{
    QMouseEvent event = mouseEvent(QEvent::MouseMove, 25, 40, Qt::LeftButton, Qt::LeftButton);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(result.mouseEventType, SyntheticEvent::Move);
    EXPECT_EQ(result.button, MouseButton::None);
    EXPECT_EQ(recordedObject(), item);
}

TEST_F(Translation, DoubleClickOnAWindowIsRefused)
{
    QMouseEvent event = mouseEvent(QEvent::MouseButtonDblClick, 25, 40);
    expectRefused(window.get(), event);
    expectRefused(item, event);
}

TEST_F(Translation, ObjectBelowAHiddenWindowIsNotReady)
{
    window->hide();
    QMouseEvent event = mouseEvent(QEvent::MouseButtonPress, 25, 40);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(recordedObject(), item);
    EXPECT_FALSE(result.ready);
}

TEST_F(Translation, DisabledItemIsNotReady)
{
    item->setEnabled(false);
    QMouseEvent event = mouseEvent(QEvent::MouseButtonPress, 25, 40);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_FALSE(result.ready);
}

TEST_F(Translation, TheRecordKeepsItsTimestamp)
{
    SyntheticEvent record;
    record.timestamp = 12345;
    QMouseEvent event = mouseEvent(QEvent::MouseButtonPress, 25, 40);
    event.setTimestamp(99);
    ASSERT_TRUE(qtEventToSyntheticEvent(window.get(), &event, &record));
    EXPECT_EQ(record.timestamp, 12345u);
}

TEST_F(Translation, TheRecordOutlivesTheItem)
{
    QMouseEvent event = mouseEvent(QEvent::MouseButtonPress, 25, 40);
    ASSERT_TRUE(translate(window.get(), event));
    delete item;
    EXPECT_TRUE(result.object->isNull());
    EXPECT_EQ(result.objectClass->className(), QStringLiteral("QQuickItem"));
    EXPECT_FALSE(result.objectName.isEmpty());
}

TEST_F(Translation, WheelIsRecordedInDegrees)
{
    const QPointF global = globalOf(30, 60);
    QWheelEvent event(QPointF(30, 60), global, QPoint(3, 4), QPoint(-240, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    expectRecord(window.get(), event, item, [](SyntheticEvent *expected) {
        expected->type = SyntheticEvent::Wheel;
        expected->wheelDeltaX = -30;
        expected->wheelDeltaY = 15;
        expected->x = 10;
        expected->y = 30;
    });
}

TEST_F(Translation, FractionsOfADegreeAreCut)
{
    QWheelEvent event(QPointF(30, 60), globalOf(30, 60), QPoint(), QPoint(7, -15), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(result.wheelDeltaX, 0);
    EXPECT_EQ(result.wheelDeltaY, -1);
}

TEST_F(Translation, WheelPositionIsRoundedHalvesAwayFromZero)
{
    const QPoint origin = window->mapToGlobal(QPoint(0, 0));
    const std::pair<qreal, int> rows[] = {{0.5, 1}, {-0.5, -1}, {0.49, 0}, {-0.49, 0}, {-1.5, -2}, {2.5, 3}};
    for (const auto &[position, rounded] : rows) {
        QWheelEvent event(QPointF(), QPointF(position, -position), QPoint(), QPoint(0, 120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        ASSERT_TRUE(translate(window.get(), event));
        EXPECT_EQ(result.x, rounded - origin.x()) << position;
        EXPECT_EQ(result.y, -rounded - origin.y()) << position;
    }
}

TEST_F(Translation, KeyIsRecordedAgainstTheFocusItem)
{
    giveFocusTo(item);
    KeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::ShiftModifier, QStringLiteral("A"), 1);
    expectRecord(window.get(), event, item, [](SyntheticEvent *expected) {
        expected->type = SyntheticEvent::Key;
        expected->keyEventType = SyntheticEvent::KeyPress;
        expected->key = Qt::Key_A;
        expected->modifiers = Modifier::Shift;
        expected->text = "A";
    });
}

TEST_F(Translation, KeyWithoutAFocusItemIsRecordedAgainstTheWindow)
{
    PlainA event(QEvent::KeyRelease, 1);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(result.keyEventType, SyntheticEvent::KeyRelease);
    EXPECT_EQ(recordedObject(), window.get());
}

TEST_F(Translation, KeyGoesToTheInnermostItemWithTheFocus)
{
    item->setFlag(QQuickItem::ItemIsFocusScope);
    auto *inner = new QQuickItem(item);
    giveFocusTo(inner);
    PlainA event(QEvent::KeyPress, 2);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(recordedObject(), inner);
}

TEST_F(Translation, KeyOnAFocusItemThatIsNotReadyIsRecordedAgainstTheWindow)
{
    giveFocusTo(item);
    window->setVisible(false);
    PlainA event(QEvent::KeyPress, 3);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(recordedObject(), window.get());
    EXPECT_FALSE(result.ready);
}

TEST_F(Translation, PressingShiftHasNoText)
{
    KeyEvent event(QEvent::KeyPress, Qt::Key_Shift, Qt::NoModifier, QString(), 4);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(result.key, Qt::Key_Shift);
    EXPECT_EQ(result.modifiers, Modifier::Shift);
    EXPECT_EQ(result.text, "");
}

TEST_F(Translation, PressBehindItsShortcutOverrideIsRefused)
{
    PlainA offer(QEvent::ShortcutOverride, 1000);
    PlainA press(QEvent::KeyPress, 1000);
    PlainA release(QEvent::KeyRelease, 1000);
    ASSERT_TRUE(translate(window.get(), offer));
    EXPECT_EQ(result.type, SyntheticEvent::Key);
    EXPECT_EQ(result.keyEventType, SyntheticEvent::KeyPress);
    expectRefused(window.get(), press);
    EXPECT_TRUE(translate(window.get(), release));
    EXPECT_EQ(result.keyEventType, SyntheticEvent::KeyRelease);
    expectRefused(window.get(), press); // however late
}

TEST_F(Translation, PressThatDiffersFromTheShortcutOverrideIsRecorded)
{
    PlainA offer(QEvent::ShortcutOverride, 2000);
    ASSERT_TRUE(translate(window.get(), offer));

    PlainA same(QEvent::KeyPress, 2000);
    PlainA later(QEvent::KeyPress, 2001);
    KeyEvent shifted(QEvent::KeyPress, Qt::Key_A, Qt::ShiftModifier, QStringLiteral("A"), 2000);
    // Unconverted: the keypad counts, although no script value stands for it.
    KeyEvent keypad(QEvent::KeyPress, Qt::Key_A, Qt::KeypadModifier, QStringLiteral("a"), 2000);
    KeyEvent other(QEvent::KeyPress, Qt::Key_B, Qt::NoModifier, QStringLiteral("b"), 2000);
    EXPECT_TRUE(translate(window.get(), later));
    EXPECT_TRUE(translate(window.get(), shifted));
    EXPECT_TRUE(translate(window.get(), keypad));
    EXPECT_TRUE(translate(window.get(), other));
    EXPECT_TRUE(translate(item, same));
    expectRefused(window.get(), same);
}

TEST_F(Translation, PressAtATimeBeyond32BitsIsNeverARepetition)
{
    constexpr quint64 beyond = (quint64(1) << 32) + 3000;
    PlainA offer(QEvent::ShortcutOverride, beyond);
    PlainA press(QEvent::KeyPress, beyond);
    PlainA pressAtTheCutTime(QEvent::KeyPress, 3000);
    ASSERT_TRUE(translate(window.get(), offer));
    EXPECT_TRUE(translate(window.get(), press));
    expectRefused(window.get(), pressAtTheCutTime);

    constexpr quint64 last = 0xffffffff;
    PlainA lastOffer(QEvent::ShortcutOverride, last);
    PlainA lastPress(QEvent::KeyPress, last);
    ASSERT_TRUE(translate(window.get(), lastOffer));
    expectRefused(window.get(), lastPress);
}

TEST_F(Translation, CommittedTextIsRecordedAgainstTheFocusItem)
{
    giveFocusTo(item);
    QInputMethodEvent event(QStringLiteral("preedit"), {});
    event.setCommitString(QStringLiteral("\u4f60"));
    expectRecord(item, event, item, [](SyntheticEvent *expected) {
        expected->type = SyntheticEvent::InputMethod;
        expected->inputMethodText = "\xe4\xbd\xa0";
    });
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(recordedObject(), item);
}

TEST_F(Translation, PreeditAloneIsRefused)
{
    QInputMethodEvent event(QStringLiteral("preedit"), {});
    expectRefused(item, event);
}

TEST_F(Translation, OtherEventsAreRefused)
{
    for (const QEvent::Type type :
         {QEvent::None, QEvent::Timer, QEvent::Enter, QEvent::Leave, QEvent::FocusIn, QEvent::Show, QEvent::Hide,
          QEvent::UpdateRequest, QEvent::InputMethodQuery, QEvent::User, QEvent::MaxUser}) {
        QEvent event(type);
        expectRefused(window.get(), event);
    }
}

TEST_F(Translation, OtherEventsAreRefusedForNoReceiver)
{
    QEvent event(QEvent::Timer);
    expectRefused(nullptr, event);
}
