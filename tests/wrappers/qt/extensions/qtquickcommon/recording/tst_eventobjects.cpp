#include "wrappers/qt/extensions/qtquickcommon/recording/eventobjects_p.h"

#include "hook/delegates.h"
#include "translationfixture.h"

#include <QtCore/QPointer>
#include <QtGui/QMoveEvent>
#include <QtGui/QResizeEvent>
#include <QtGui/QTouchEvent>

#include <functional>
#include <utility>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

/// A plain object in a tree that the test lays out through delegates.
class Node : public QObject
{
    Q_OBJECT
public:
    QPoint position;
    QObject *child = nullptr;
    QObject *focus = nullptr;
    QRect area{0, 0, -1, -1};
    QString reason;
    bool diesWhenAsked = false;
    std::function<void()> onAsked; ///< once
};

/// Deeper than Node, but without delegates of its own.
class Leaf : public QObject
{
    Q_OBJECT
};

Node *toNode(const SharedPtr<Object> &object)
{
    return static_cast<Node *>(nativeQObject(object));
}

SharedPtr<Object> wrappedOrNull(QObject *object)
{
    return object ? wrapAndRegisterQObject(object) : SharedPtr<Object>();
}

class NodeGeometry : public GeometryDelegate
{
public:
    QPoint mapFromGlobal(const SharedPtr<Object> &object, int x, int y) const override
    {
        return QPoint(x, y) - toNode(object)->position;
    }
    SharedPtr<Object> childAt(const SharedPtr<Object> &object, int, int) const override
    {
        return wrappedOrNull(toNode(object)->child);
    }
    SharedPtr<Object> focusChild(const SharedPtr<Object> &object) const override
    {
        return wrappedOrNull(toNode(object)->focus);
    }
    QRect screenRect(const SharedPtr<Object> &object) const override { return toNode(object)->area; }
};

class NodeInteraction : public InteractionDelegate
{
public:
    QString notReadyReason(const SharedPtr<Object> &object) const override
    {
        Node *node = toNode(object);
        const QString reason = node->reason;
        if (const std::function<void()> action = std::exchange(node->onAsked, nullptr))
            action();
        if (node->diesWhenAsked)
            delete node;
        return reason;
    }
};

class EventObjects : public testing::Test
{
protected:
    EventObjects()
    {
        const Class *type = classForMetaObject(&Node::staticMetaObject);
        DelegateFactory::self()->registerDelegate(type, std::make_unique<NodeGeometry>());
        DelegateFactory::self()->registerDelegate(type, std::make_unique<NodeInteraction>());
    }

    SyntheticEvent result = VantleTest::markedRecord();
    const int unwritten = result.x;
    VantleTest::TestLogger logger;
    Application application;
    Node outer;
    Node inner;
    Leaf leaf;
};

} // namespace

TEST_F(EventObjects, ObjectWithoutAReasonAgainstItIsReady)
{
    setEventObject(&result, wrapAndRegisterQObject(&outer));
    EXPECT_EQ(nativeQObject(result.object), &outer);
    EXPECT_EQ(result.objectClass, classForMetaObject(&Node::staticMetaObject));
    EXPECT_TRUE(result.ready);
    EXPECT_EQ(result.x, unwritten);
}

TEST_F(EventObjects, ObjectWithAReasonAgainstItIsNotReady)
{
    result.ready = true;
    outer.reason = QStringLiteral("asleep");
    setEventObject(&result, wrapAndRegisterQObject(&outer));
    EXPECT_FALSE(result.ready);
}

TEST_F(EventObjects, ObjectOfAClassWithoutAnInteractionDelegateIsNotReady)
{
    result.ready = true;
    setEventObject(&result, wrapAndRegisterQObject(&leaf));
    EXPECT_FALSE(result.ready);
    EXPECT_EQ(result.objectName, "");
}

TEST_F(EventObjects, ObjectThatDiesWhileItIsAskedLeavesADeadObjectInTheRecord)
{
    auto *mortal = new Node;
    mortal->diesWhenAsked = true;
    const QPointer<Node> guard(mortal);
    setEventObject(&result, wrapAndRegisterQObject(mortal));
    ASSERT_TRUE(guard.isNull());
    EXPECT_TRUE(result.object->isNull());
    EXPECT_EQ(result.objectClass, classForMetaObject(&Node::staticMetaObject));
}

TEST_F(EventObjects, DeadItemsAndWindowsAreRecordedAsNotReady)
{
    setupQtQuick();
    for (QObject *object : {static_cast<QObject *>(new QQuickItem), static_cast<QObject *>(new QQuickWindow)}) {
        const SharedPtr<Object> wrapper = wrapAndRegisterQObject(object);
        delete object;
        setEventObjectAt(&result, wrapper, QPoint(1, 2));
        EXPECT_EQ(result.object, wrapper);
        EXPECT_EQ(result.objectName, "");
        EXPECT_FALSE(result.ready);
    }
}

TEST_F(EventObjects, NullReceiverIsRecordedAsANullObject)
{
    setEventFocusObject(&result, nullptr);
    ASSERT_TRUE(result.object);
    EXPECT_TRUE(result.object->isNull());
    EXPECT_FALSE(result.ready);
}

TEST_F(EventObjects, DescentEndsAtTheDeepestObjectWithTheCoordinatesInsideIt)
{
    outer.child = &inner;
    outer.position = QPoint(10, 20);
    inner.position = QPoint(30, 50);
    setEventObjectAt(&result, wrapAndRegisterQObject(&outer), QPoint(100, 100));
    EXPECT_EQ(nativeQObject(result.object), &inner);
    EXPECT_EQ(result.x, 70);
    EXPECT_EQ(result.y, 50);
}

TEST_F(EventObjects, DescentThatEndsAtAnObjectWithoutGeometryWritesNoCoordinates)
{
    outer.child = &leaf;
    setEventObjectAt(&result, wrapAndRegisterQObject(&outer), QPoint(100, 100));
    EXPECT_EQ(nativeQObject(result.object), &leaf);
    EXPECT_EQ(result.x, unwritten);
    EXPECT_EQ(result.y, unwritten);

    setEventObjectAt(&result, wrapAndRegisterQObject(&leaf), QPoint(100, 100));
    EXPECT_EQ(result.x, unwritten);
}

TEST_F(EventObjects, FocusIsFollowedToItsEnd)
{
    outer.focus = &inner;
    setEventFocusObject(&result, &outer);
    EXPECT_EQ(nativeQObject(result.object), &inner);

    inner.focus = &leaf;
    setEventFocusObject(&result, &outer);
    EXPECT_EQ(nativeQObject(result.object), &leaf);
}

TEST_F(EventObjects, ObjectThatNamesItselfAsItsFocusChildEndsTheWalk)
{
    outer.focus = &inner;
    inner.focus = &inner;
    setEventFocusObject(&result, &outer);
    EXPECT_EQ(nativeQObject(result.object), &inner);
}

TEST_F(EventObjects, GestureAreaNeedsBothAWidthAndAHeight)
{
    const std::pair<QRect, QSize> rows[] = {
        {QRect(5, 6, 300, 200), QSize(300, 200)}, {QRect(5, 6, 0, 0), QSize(0, 0)},
        {QRect(5, 6, 300, -1), QSize(0, 0)},      {QRect(5, 6, -1, 200), QSize(0, 0)},
        {QRect(5, 6, -1, -1), QSize(0, 0)},
    };
    for (const auto &[area, size] : rows) {
        outer.area = area;
        QTouchEvent event(QEvent::TouchBegin);
        SyntheticEvent record;
        ASSERT_TRUE(qtEventToSyntheticEvent(&outer, &event, &record));
        EXPECT_EQ(QSize(record.touch.areaWidth, record.touch.areaHeight), size);
    }
}

TEST_F(EventObjects, GestureOnAnObjectWithoutGeometryHasNoArea)
{
    QTouchEvent event(QEvent::TouchBegin);
    SyntheticEvent record;
    ASSERT_TRUE(qtEventToSyntheticEvent(&leaf, &event, &record));
    EXPECT_EQ(record.touch.areaWidth, 0);
    EXPECT_EQ(record.touch.areaHeight, 0);
    EXPECT_EQ(nativeQObject(record.object), &leaf);
}

TEST_F(EventObjects, EventsThatAreTranslatedWithinAnotherComeBeforeIt)
{
    const auto isRecorded = [this](QEvent &event) {
        SyntheticEvent record;
        return qtEventToSyntheticEvent(&outer, &event, &record);
    };
    QResizeEvent resize(QSize(30, 30), QSize(20, 20));
    QMoveEvent move(QPoint(3, 4), QPoint(1, 2));
    QEvent timer(QEvent::Timer);
    ASSERT_FALSE(isRecorded(timer));

    int nested = 0;
    outer.onAsked = [&] {
        ++nested;
        EXPECT_TRUE(isRecorded(move)) << "the resize is not over yet";
    };
    EXPECT_TRUE(isRecorded(resize));
    EXPECT_FALSE(isRecorded(move)) << "it is the resize that was over last";
    EXPECT_TRUE(isRecorded(move));

    outer.onAsked = [&] {
        ++nested;
        EXPECT_TRUE(isRecorded(resize));
    };
    EXPECT_TRUE(isRecorded(move));
    EXPECT_TRUE(isRecorded(move)) << "a move was over last";
    EXPECT_EQ(nested, 2);
}

TEST_F(EventObjects, FingersThatAreLiftedWithinABeginEndItsSequence)
{
    outer.onAsked = [this] {
        QTouchEvent cancel(QEvent::TouchCancel);
        SyntheticEvent record;
        EXPECT_TRUE(qtEventToSyntheticEvent(&outer, &cancel, &record));
    };
    const QEventPoint finger(5, QEventPoint::Pressed, QPointF(1, 2), QPointF(1, 2));
    QTouchEvent begin(QEvent::TouchBegin, nullptr, Qt::NoModifier, {finger});
    SyntheticEvent record;
    ASSERT_TRUE(qtEventToSyntheticEvent(&outer, &begin, &record));
    EXPECT_EQ(record.touch.primaryIndex, 0u);

    QTouchEvent update(QEvent::TouchUpdate, nullptr, Qt::NoModifier, {finger});
    SyntheticEvent next;
    ASSERT_TRUE(qtEventToSyntheticEvent(&outer, &update, &next));
    EXPECT_GE(next.touch.primaryIndex, next.touch.points.size());
}

#include "tst_eventobjects.moc"
