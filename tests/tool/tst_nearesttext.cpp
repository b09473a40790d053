#include "tool/nearesttext.h"

#include <gtest/gtest.h>

using Vantle::Tool::nearestText;

namespace {

const QStringList functions{QStringLiteral("mouseClick"), QStringLiteral("mouseDrag"), QStringLiteral("type"),
                            QStringLiteral("findObject")};

TEST(NearestText, isTheOneWithTheFewestMistakes)
{
    EXPECT_EQ(nearestText(QStringLiteral("mouseClik"), functions), QStringLiteral("mouseClick"));
    EXPECT_EQ(nearestText(QStringLiteral("MouseDrg"), functions), QStringLiteral("mouseDrag"));
    EXPECT_EQ(nearestText(QStringLiteral("typ"), functions), QStringLiteral("type"));
    EXPECT_EQ(nearestText(QStringLiteral("findobject"), functions), QStringLiteral("findObject"));
}

TEST(NearestText, isNoneIfAllAreFar)
{
    EXPECT_EQ(nearestText(QStringLiteral("click"), functions), QString());
    EXPECT_EQ(nearestText(QStringLiteral("x"), functions), QString());
    EXPECT_EQ(nearestText(QString(), functions), QString());
    EXPECT_EQ(nearestText(QStringLiteral("type"), {}), QString());
}

} // namespace
