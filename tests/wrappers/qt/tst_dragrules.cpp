#include "wrappers/qt/dragrules.h"

#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>

#include <algorithm>
#include <cstdlib>
#include <ostream>

using namespace Vantle::QtWrapper;

namespace {

int dragDistance()
{
    return QGuiApplication::styleHints()->startDragDistance();
}

/// The longer one of the two ways along the axes.
int longest(QPoint way)
{
    return std::max(std::abs(way.x()), std::abs(way.y()));
}

template<typename Check>
void forAllWays(int reach, Check check)
{
    for (int x = -reach; x <= reach; ++x) {
        for (int y = -reach; y <= reach; ++y)
            check(QPoint(x, y));
    }
}

} // namespace

TEST(DragRules, CrossingIsWhereQtTakesAMovementForADrag)
{
    forAllWays(40, [](QPoint distance) { EXPECT_EQ(crossingOffset(distance).manhattanLength(), dragDistance()); });
}

TEST(DragRules, CrossingLiesInTheDirectionOfTheDrag)
{
    forAllWays(40, [](QPoint distance) {
        const QPoint crossing = crossingOffset(distance);
        EXPECT_GE(crossing.x() * distance.x(), 0);
        EXPECT_GE(crossing.y() * distance.y(), 0);
    });
    EXPECT_EQ(crossingOffset({}), QPoint(dragDistance(), 0));
    EXPECT_EQ(crossingOffset({0, -1}), QPoint(0, -dragDistance()));
    EXPECT_EQ(crossingOffset({-3, 3}), QPoint(-5, 5)) << "with a drag distance of 10";
}

TEST(DragRules, DistanceLeadsToTheEndOfTheWay)
{
    int exact = 0;
    int all = 0;
    forAllWays(120, [&](QPoint way) {
        if (way.manhattanLength() < 2 * dragDistance())
            return;
        const QPoint distance = distanceBehindCrossing(way);
        const QPoint missed = distance + crossingOffset(distance) - way;
        EXPECT_LE(longest(missed), 1) << way.x() << ' ' << way.y();
        ++all;
        exact += missed.isNull() ? 1 : 0;
    });
    EXPECT_GT(exact, all * 8 / 10);
}

TEST(DragRules, DistanceOfAWayAlongAnAxisIsExact)
{
    for (int way = dragDistance() + 1; way < 200; ++way) {
        for (const QPoint direction : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)})
            EXPECT_EQ(distanceBehindCrossing(way * direction), (way - dragDistance()) * direction);
    }
}

TEST(DragRules, DistanceLeavesTheWayToTheCrossingALength)
{
    // What is left of the way is fed to who measures it, and must be a drag by then.
    forAllWays(60, [](QPoint way) {
        if (way.manhattanLength() >= dragDistance()) {
            EXPECT_EQ((way - distanceBehindCrossing(way)).manhattanLength(), dragDistance());
        }
    });
}

TEST(DragRules, WayThatIsNoDragHasNoDistance)
{
    EXPECT_EQ(distanceBehindCrossing({}), QPoint());
    EXPECT_EQ(distanceBehindCrossing({dragDistance() - 1, 0}), QPoint());
    EXPECT_EQ(distanceBehindCrossing({dragDistance(), 0}), QPoint());
}
