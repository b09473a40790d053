#include "wrappers/qt/functions/wheelnotches_p.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace Vantle::QtWrapper;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(WheelNotches, AreOfFifteenDegrees)
{
    EXPECT_THAT(wheelNotches({0, -45}), ElementsAre(QPoint(0, -120), QPoint(0, -120), QPoint(0, -120)));
    EXPECT_THAT(wheelNotches({15, 0}), ElementsAre(QPoint(120, 0)));
}

TEST(WheelNotches, EndWithWhatIsLeft)
{
    EXPECT_THAT(wheelNotches({0, 40}), ElementsAre(QPoint(0, 120), QPoint(0, 120), QPoint(0, 80)));
    EXPECT_THAT(wheelNotches({1, 0}), ElementsAre(QPoint(8, 0)));
}

TEST(WheelNotches, TurnBothWays)
{
    EXPECT_THAT(wheelNotches({-7, 22}), ElementsAre(QPoint(-56, 120), QPoint(0, 56)));
}

TEST(WheelNotches, AreNoneForAWheelThatDoesNotTurn)
{
    EXPECT_THAT(wheelNotches({0, 0}), IsEmpty());
}

TEST(WheelNotches, GrowWhereNobodyWouldTurnThatFar)
{
    const std::vector<QPoint> notches = wheelNotches({0, -100000});
    EXPECT_EQ(notches.size(), 200U);
    QPoint sum;
    for (const QPoint notch : notches)
        sum += notch;
    EXPECT_EQ(sum, QPoint(0, -800000));
    EXPECT_LE(wheelNotches({std::numeric_limits<int>::min(), 1}).size(), 200U);
}
