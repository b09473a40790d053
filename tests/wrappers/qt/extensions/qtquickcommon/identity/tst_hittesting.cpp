#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"

#include "support/compressionharness.h"
#include "support/waiting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QHash>
#include <QtCore/QLineF>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquicktranslate_p.h>

#include <initializer_list>
#include <random>

using namespace Vantle::QtWrapper;

namespace {

QQuickItem *addItem(QQuickItem *parent, const QRectF &geometry, qreal z = 0)
{
    auto *item = new QQuickItem(parent);
    item->setPosition(geometry.topLeft());
    item->setSize(geometry.size());
    item->setZ(z);
    return item;
}

/// An item in the shape of the circle that touches its edges.
class RoundItem : public QQuickItem
{
public:
    using QQuickItem::QQuickItem;
    bool contains(const QPointF &point) const override
    {
        return QLineF(boundingRect().center(), point).length() <= width() / 2;
    }
};

/// Counts how often it is asked for its shape.
class CountingItem : public QQuickItem
{
public:
    using QQuickItem::QQuickItem;
    bool contains(const QPointF &point) const override
    {
        ++asked;
        return QQuickItem::contains(point);
    }

    static int asked;
};
int CountingItem::asked = 0;

/// The rules of hit testing, written down a second time on Qt's own mapping.
QQuickItem *plainlyAt(QQuickItem *item, const QPointF &point)
{
    const bool inside = item->contains(point);
    if (!inside && item->flags().testFlag(QQuickItem::ItemClipsChildrenToShape))
        return nullptr;
    const QList<QQuickItem *> children = zOrderedChildItems(item);
    for (auto it = children.crbegin(); it != children.crend(); ++it) {
        QQuickItem *const child = *it;
        if (!child->isVisible())
            continue;
        if (QQuickItem *const hit = plainlyAt(child, child->mapFromItem(item, point)))
            return hit;
    }
    return inside ? item : nullptr;
}

/// Trees of items with transforms of all kinds, every fifth of them singular.
class TransformedTrees
{
public:
    explicit TransformedTrees(unsigned seed) : m_random(seed) {}

    void grow(QQuickItem *parent, int depth)
    {
        for (int i = pick(4); i >= 0; --i) {
            QQuickItem *const item = addItem(parent, QRectF(pick(100) - 20, pick(100) - 20, pick(60), pick(60)),
                                             pick(10) ? 0 : pick(3) - 1);
            item->setFlag(QQuickItem::ItemClipsChildrenToShape, pick(8) == 0);
            item->setTransformOrigin(static_cast<QQuickItem::TransformOrigin>(pick(9)));
            transform(item);
            if (depth > 0)
                grow(item, depth - 1);
        }
    }

    /// Coordinates between and on those that edges lie at.
    QPointF point() { return QPointF(pick(400) / 2.0 - 50, pick(400) / 2.0 - 50); }

private:
    int pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    qreal oneOf(std::initializer_list<qreal> values) { return values.begin()[pick(static_cast<int>(values.size()))]; }

    void transform(QQuickItem *item)
    {
        if (pick(3) == 0)
            item->setScale(oneOf({0, 1e-5, 1e-13, 0.5, 2, -1}));
        if (pick(3) == 0)
            item->setRotation(oneOf({90, 45, 180, -30, 17}));
        if (pick(4) == 0) {
            auto *const scale = new QQuickScale(item);
            scale->setXScale(oneOf({0, 1, 2, -0.5}));
            scale->setYScale(oneOf({0, 1, 1, 1e-4}));
            scale->setOrigin(QVector3D(5, 5, 0));
            scale->appendToItem(item);
        }
        if (pick(4) == 0) {
            auto *const rotation = new QQuickRotation(item);
            rotation->setAxis(static_cast<Qt::Axis>(pick(3)));
            rotation->setAngle(oneOf({90, 60, 270, 45}));
            rotation->appendToItem(item);
        }
    }

    std::mt19937 m_random;
};

class HitTesting : public testing::Test
{
protected:
    HitTesting() { root.setSize(QSizeF(100, 100)); }

    QQuickItem *at(qreal x, qreal y) { return recursiveQuickItemAt(&root, QPointF(x, y)); }

    VantleTest::TestLogger logger;
    QQuickItem root;
};

} // namespace

TEST_F(HitTesting, GivesTheItemItselfWhereNothingLiesOnIt)
{
    EXPECT_EQ(at(50, 50), &root);
    EXPECT_EQ(at(0, 0), &root);
}

TEST_F(HitTesting, GivesNothingOutsideEverything)
{
    addItem(&root, QRectF(10, 10, 20, 20));
    EXPECT_EQ(at(150, 50), nullptr);
    EXPECT_EQ(at(-1, -1), nullptr);
}

TEST_F(HitTesting, GivesTheDeepestItem)
{
    QQuickItem *outer = addItem(&root, QRectF(10, 10, 50, 50));
    QQuickItem *middle = addItem(outer, QRectF(10, 10, 30, 30));
    QQuickItem *inner = addItem(middle, QRectF(10, 10, 10, 10));
    EXPECT_EQ(at(35, 35), inner);
    EXPECT_EQ(at(25, 25), middle);
    EXPECT_EQ(at(15, 15), outer);
}

TEST_F(HitTesting, FallsThroughToTheSiblingBelowWhereTheTopmostIsMissed)
{
    QQuickItem *below = addItem(&root, QRectF(0, 0, 80, 80));
    QQuickItem *above = addItem(&root, QRectF(0, 0, 40, 40));
    EXPECT_EQ(at(20, 20), above);
    EXPECT_EQ(at(60, 60), below);
}

TEST_F(HitTesting, ADeepItemBelowDoesNotWinOverAShallowOneAbove)
{
    QQuickItem *below = addItem(&root, QRectF(0, 0, 80, 80));
    addItem(below, QRectF(0, 0, 80, 80));
    QQuickItem *above = addItem(&root, QRectF(0, 0, 80, 80));
    EXPECT_EQ(at(20, 20), above);
}

TEST_F(HitTesting, AChildReachingBeyondItsUnclippedParentIsHit)
{
    QQuickItem *parent = addItem(&root, QRectF(0, 0, 10, 10));
    QQuickItem *child = addItem(parent, QRectF(50, 50, 10, 10));
    EXPECT_EQ(at(55, 55), child);

    QQuickItem *outside = addItem(&root, QRectF(200, 0, 10, 10));
    EXPECT_EQ(at(205, 5), outside);
}

TEST_F(HitTesting, NothingBelowAClippingItemIsHitOutsideItsShape)
{
    QQuickItem *parent = addItem(&root, QRectF(0, 0, 10, 10));
    QQuickItem *child = addItem(parent, QRectF(5, 5, 50, 50));
    parent->setClip(true);
    ASSERT_TRUE(parent->flags().testFlag(QQuickItem::ItemClipsChildrenToShape));
    EXPECT_EQ(at(55, 55), &root);
    EXPECT_EQ(at(7, 7), child);

    root.setClip(true);
    EXPECT_EQ(at(150, 150), nullptr);
    addItem(&root, QRectF(140, 140, 20, 20));
    EXPECT_EQ(at(150, 150), nullptr);
}

TEST_F(HitTesting, TheFlagAloneClipsAlsoWithoutTheClipProperty)
{
    root.setFlag(QQuickItem::ItemClipsChildrenToShape);
    addItem(&root, QRectF(140, 140, 20, 20));
    EXPECT_EQ(at(150, 150), nullptr);
}

TEST_F(HitTesting, NestedClippingLeavesTheIntersection)
{
    QQuickItem *outer = addItem(&root, QRectF(0, 0, 30, 30));
    outer->setClip(true);
    QQuickItem *inner = addItem(outer, QRectF(20, 20, 40, 40));
    inner->setClip(true);
    QQuickItem *leaf = addItem(inner, QRectF(0, 0, 80, 80));
    EXPECT_EQ(at(25, 25), leaf);
    EXPECT_EQ(at(15, 15), outer);
    EXPECT_EQ(at(45, 45), &root); // inside inner, outside outer
    EXPECT_EQ(at(90, 90), &root);
}

TEST_F(HitTesting, ClippingFollowsTheShapeOfTheItem)
{
    auto *round = new RoundItem(&root);
    round->setSize(QSizeF(40, 40));
    round->setFlag(QQuickItem::ItemClipsChildrenToShape);
    QQuickItem *child = addItem(round, QRectF(0, 0, 40, 40));
    EXPECT_EQ(at(20, 20), child);
    EXPECT_EQ(at(1, 1), &root);
}

TEST_F(HitTesting, ItemsWithAShapeDecideForThemselves)
{
    auto *round = new RoundItem(&root);
    round->setSize(QSizeF(40, 40));
    EXPECT_EQ(at(20, 20), round);
    EXPECT_EQ(at(1, 1), &root);
}

TEST_F(HitTesting, ATransparentItemIsOutWithItsSubtree)
{
    QQuickItem *parent = addItem(&root, QRectF(0, 0, 50, 50));
    QQuickItem *child = addItem(parent, QRectF(0, 0, 50, 50));
    child->setOpacity(1);
    parent->setOpacity(0);
    EXPECT_EQ(at(20, 20), &root);

    root.setOpacity(0);
    EXPECT_EQ(at(20, 20), nullptr);
}

TEST_F(HitTesting, OpacityCountsAsZeroOnlyWithinRounding)
{
    QQuickItem *child = addItem(&root, QRectF(0, 0, 50, 50));
    child->setOpacity(1e-13);
    EXPECT_EQ(at(20, 20), &root);
    child->setOpacity(1e-3);
    EXPECT_EQ(at(20, 20), child);
}

TEST_F(HitTesting, OpacityIsNotMultipliedDownTheTree)
{
    QQuickItem *parent = addItem(&root, QRectF(0, 0, 50, 50));
    QQuickItem *child = addItem(parent, QRectF(0, 0, 50, 50));
    parent->setOpacity(1e-7);
    child->setOpacity(1e-7);
    EXPECT_EQ(at(20, 20), child);
}

TEST_F(HitTesting, AnInvisibleChildIsSkippedWithItsSubtree)
{
    QQuickItem *parent = addItem(&root, QRectF(0, 0, 50, 50));
    addItem(parent, QRectF(0, 0, 50, 50));
    parent->setVisible(false);
    EXPECT_EQ(at(20, 20), &root);
}

TEST_F(HitTesting, TheRootIsNotAskedWhetherItIsVisible)
{
    root.setVisible(false);
    EXPECT_EQ(at(20, 20), &root);
}

TEST_F(HitTesting, DisabledItemsAreHit)
{
    QQuickItem *child = addItem(&root, QRectF(0, 0, 50, 50));
    child->setEnabled(false);
    EXPECT_EQ(at(20, 20), child);
}

TEST_F(HitTesting, TheLaterOfTwoChildrenAtEqualZWins)
{
    for (const qreal z : {0.0, 3.0, -3.0}) {
        QQuickItem parent(&root);
        addItem(&parent, QRectF(0, 0, 50, 50), z);
        QQuickItem *later = addItem(&parent, QRectF(0, 0, 50, 50), z);
        EXPECT_EQ(at(20, 20), later) << z;
    }
}

TEST_F(HitTesting, TheHigherZWinsInEitherOrder)
{
    QQuickItem *high = addItem(&root, QRectF(0, 0, 50, 50), 1);
    addItem(&root, QRectF(0, 0, 50, 50), 0.5);
    EXPECT_EQ(at(20, 20), high);
    QQuickItem *higher = addItem(&root, QRectF(0, 0, 50, 50), 2);
    EXPECT_EQ(at(20, 20), higher);
}

TEST_F(HitTesting, AChildAtNegativeZLosesToItsSiblingAtZero)
{
    QQuickItem *zero = addItem(&root, QRectF(0, 0, 50, 50), 0);
    addItem(&root, QRectF(0, 0, 50, 50), -1);
    EXPECT_EQ(at(20, 20), zero);
}

TEST_F(HitTesting, AChildAtNegativeZStillWinsOverItsParent)
{
    QQuickItem *below = addItem(&root, QRectF(0, 0, 50, 50), -1);
    EXPECT_EQ(at(20, 20), below);
}

TEST_F(HitTesting, FollowsPositionRotationAndScale)
{
    QQuickItem *bar = addItem(&root, QRectF(40, 0, 20, 100));
    bar->setRotation(90); // about its centre (50, 50): now covers x 0..100, y 40..60
    EXPECT_EQ(at(5, 50), bar);
    EXPECT_EQ(at(50, 5), &root);

    bar->setScale(0.5); // x 25..75, y 45..55
    EXPECT_EQ(at(30, 50), bar);
    EXPECT_EQ(at(5, 50), &root);
    EXPECT_EQ(at(50, 42), &root);
}

TEST_F(HitTesting, MapsThroughNestedTransformations)
{
    QQuickItem *outer = addItem(&root, QRectF(50, 50, 20, 20));
    outer->setTransformOrigin(QQuickItem::TopLeft);
    outer->setScale(2);
    QQuickItem *inner = addItem(outer, QRectF(10, 0, 10, 5));
    inner->setTransformOrigin(QQuickItem::TopLeft);
    inner->setRotation(90); // covers x 5..10, y 0..10 of outer: x 60..70, y 50..70 of the root
    EXPECT_EQ(at(65, 65), inner);
    EXPECT_EQ(at(75, 55), outer);
    EXPECT_EQ(at(55, 55), outer);
}

TEST_F(HitTesting, MapsAsMapFromItemDoesAlsoWhereATransformHasNoInverse)
{
    int singular = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        QQuickItem scene;
        scene.setSize(QSizeF(100, 100));
        TransformedTrees trees(seed);
        trees.grow(&scene, 3);
        QQuickItem *const below = scene.childItems().constFirst();
        for (int i = 0; i < 100; ++i) {
            const QPointF point = trees.point();
            QQuickItem *const hit = recursiveQuickItemAt(&scene, point);
            ASSERT_EQ(hit, plainlyAt(&scene, point)) << "seed " << seed << " at " << point.x() << ", " << point.y();
            ASSERT_EQ(recursiveQuickItemAt(below, point), plainlyAt(below, point)) << "seed " << seed;
            for (const QQuickItem *item = hit; item && item != &scene; item = item->parentItem())
                singular += qFuzzyIsNull(item->itemTransform(item->parentItem(), nullptr).determinant()) ? 1 : 0;
        }
    }
    // Trees that are never hit where it matters would agree on anything.
    EXPECT_GT(singular, 100);
}

TEST_F(HitTesting, AClosedMenuOfNoScaleDoesNotTakeWhatLiesBesideIt)
{
    QQuickItem *const button = addItem(&root, QRectF(0, 0, 100, 20));
    QQuickItem *const menu = addItem(&root, QRectF(0, 20, 100, 80));
    menu->setScale(0);
    // Mapped by no inverse, the point is that of the window in the menu.
    EXPECT_EQ(at(50, 10), menu);
    EXPECT_EQ(at(50, 90), &root);
    menu->setVisible(false);
    EXPECT_EQ(at(50, 10), button);
}

TEST_F(HitTesting, AnItemWithoutSizeIsLookedThroughButItsChildrenAreHit)
{
    QQuickItem *empty = addItem(&root, QRectF(10, 10, 0, 0));
    EXPECT_EQ(at(12, 12), &root);
    QQuickItem *child = addItem(empty, QRectF(0, 0, 10, 10));
    EXPECT_EQ(at(12, 12), child);
}

TEST_F(HitTesting, TheLastOfTenThousandSiblingsIsFoundWithoutAskingTheOthers)
{
    for (int i = 0; i < 10000; ++i)
        (new CountingItem(&root))->setSize(QSizeF(100, 100));
    CountingItem::asked = 0;
    EXPECT_EQ(at(50, 50), root.childItems().constLast());
    EXPECT_EQ(CountingItem::asked, 1);
}

TEST_F(HitTesting, EveryVisitedItemIsAskedForItsShapeOnce)
{
    for (int i = 0; i < 1000; ++i) {
        auto *item = new CountingItem(&root);
        item->setX(i);
        item->setSize(QSizeF(1, 1));
        item->setZ(i % 7);
        item->setVisible(i % 2 == 0);
    }
    CountingItem::asked = 0;
    EXPECT_EQ(at(50, 50), &root);
    EXPECT_EQ(CountingItem::asked, 500);
}

TEST_F(HitTesting, ReachesTheEndOfADeepNest)
{
    QQuickItem *innermost = &root;
    for (int i = 0; i < 1000; ++i)
        innermost = addItem(innermost, QRectF(0, 0, 100, 100));
    EXPECT_EQ(at(50, 50), innermost);
}

TEST_F(HitTesting, AChildThatIsGoneIsNotFound)
{
    QQuickItem *below = addItem(&root, QRectF(0, 0, 50, 50));
    delete addItem(&root, QRectF(0, 0, 50, 50));
    EXPECT_EQ(at(20, 20), below);
}

TEST_F(HitTesting, TheContentItemOfAnEmptyWindowIsTheHit)
{
    QQuickWindow window;
    window.resize(100, 100);
    window.show();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return window.contentItem()->size() == QSizeF(100, 100); }));
    EXPECT_EQ(recursiveQuickItemAt(window.contentItem(), QPointF(50, 50)), window.contentItem());
    EXPECT_EQ(recursiveQuickItemAt(window.contentItem(), QPointF(500, 50)), nullptr);
}

TEST_F(HitTesting, StackingOrderOfAChildlessItemIsEmpty)
{
    EXPECT_TRUE(zOrderedChildItems(&root).isEmpty());
}

TEST_F(HitTesting, StackingOrderIsTheChildrensOwnWhereNoZIsSet)
{
    for (int i = 0; i < 5; ++i)
        addItem(&root, QRectF());
    EXPECT_EQ(zOrderedChildItems(&root), root.childItems());
}

TEST_F(HitTesting, StackingOrderIsAscendingAndStable)
{
    for (int i = 0; i < 10000; ++i)
        addItem(&root, QRectF(), (i * 7) % 3 - 1);
    QHash<QQuickItem *, qsizetype> places;
    const QList<QQuickItem *> children = root.childItems();
    for (QQuickItem *child : children)
        places.insert(child, places.size());
    const QList<QQuickItem *> ordered = zOrderedChildItems(&root);
    ASSERT_EQ(ordered.size(), children.size());
    for (qsizetype i = 1; i < ordered.size(); ++i) {
        ASSERT_LE(ordered[i - 1]->z(), ordered[i]->z());
        if (ordered[i - 1]->z() == ordered[i]->z()) {
            ASSERT_LT(places.value(ordered[i - 1]), places.value(ordered[i]));
        }
    }
}

TEST_F(HitTesting, ZWithinRoundingOfZeroSortsOnlyAlongWithARealOne)
{
    QQuickItem *nearlyZero = addItem(&root, QRectF(0, 0, 10, 10), 1e-13);
    QQuickItem *zero = addItem(&root, QRectF(0, 0, 10, 10), 0);
    EXPECT_THAT(zOrderedChildItems(&root), testing::ElementsAre(nearlyZero, zero));

    QQuickItem *one = addItem(&root, QRectF(50, 50, 10, 10), 1);
    EXPECT_THAT(zOrderedChildItems(&root), testing::ElementsAre(zero, nearlyZero, one));
}
