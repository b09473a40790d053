#include "tool/statementtext.h"

#include <gtest/gtest.h>

#include <QtCore/QMetaEnum>
#include <QtQml/QJSEngine>

#include <limits>

using namespace Vantle::Protocol;
using Vantle::Tool::argumentText;
using Vantle::Tool::statementText;

namespace {

const QString intType = QStringLiteral("int");
const QString stringType = QStringLiteral("QString");
const QString buttonType = QStringLiteral("Qt::MouseButton");
const QString modifiersType = QStringLiteral("Qt::KeyboardModifiers");
const QString stateType = QStringLiteral("WindowState");

QString text(const QString &type, const QJsonValue &value)
{
    return argumentText({QStringLiteral("any"), type, value});
}

TEST(StatementText, readsLikeACall)
{
    const Statement statement{QStringLiteral("mouseClick"),
                              QStringLiteral("Main ToolButton#undo"),
                              {{QStringLiteral("x"), intType, 12},
                               {QStringLiteral("y"), intType, 9},
                               {QStringLiteral("button"), buttonType, 1}},
                              QStringLiteral("12:00:00.000")};
    EXPECT_EQ(statementText(statement), QStringLiteral("mouseClick(\"Main ToolButton#undo\", 12, 9, Qt.LeftButton);"));
}

TEST(StatementText, everyTypeInOneStatement)
{
    const Statement statement{QStringLiteral("f"),
                              QStringLiteral("W[text=\"a\\\"b\"]"),
                              {{QString(), intType, -3},
                               {QString(), stringType, QStringLiteral("x\ny")},
                               {QString(), modifiersType, int(Qt::ControlModifier | Qt::ShiftModifier)},
                               {QString(), buttonType, 2},
                               {QString(), stateType, 2}},
                              QString()};
    EXPECT_EQ(statementText(statement),
              QStringLiteral("f(\"W[text=\\\"a\\\\\\\"b\\\"]\", -3, \"x\\ny\", Qt.ControlModifier|Qt.ShiftModifier, "
                             "Qt.RightButton, WindowState.Maximize);"));
}

TEST(StatementText, nothingIsInventedForWhatIsMissing)
{
    EXPECT_EQ(statementText({QStringLiteral("closeWindow"), QStringLiteral("Main"), {}, QString()}),
              QStringLiteral("closeWindow(\"Main\");"));
    EXPECT_EQ(statementText({QStringLiteral("f"), QString(), {}, QString()}), QStringLiteral("f();"));
    EXPECT_EQ(statementText({QStringLiteral("f"), QString(), {{QString(), intType, 1}}, QString()}),
              QStringLiteral("f(1);"));
}

TEST(StatementText, textsWithPlaceholdersAreLeftAlone)
{
    const Statement statement{QStringLiteral("type"),
                              QStringLiteral("%2"),
                              {{QString(), stringType, QStringLiteral("%1 %2")}},
                              QString()};
    EXPECT_EQ(statementText(statement), QStringLiteral("type(\"%2\", \"%1 %2\");"));
}

TEST(StatementText, pressesKeysAndDropsReadLikeTheOthers)
{
    const auto number = [](int value) { return Vantle::Protocol::StatementArgument{QString(), intType, value}; };
    const auto words = [](const char *value) {
        return Vantle::Protocol::StatementArgument{QString(), stringType, QString::fromUtf8(value)};
    };
    const Vantle::Protocol::StatementArgument left{QString(), buttonType, 1};
    const Vantle::Protocol::StatementArgument shift{QString(), modifiersType, 0x02000000};
    const auto line = [](const char *function, const QList<Vantle::Protocol::StatementArgument> &arguments) {
        return statementText({QLatin1String(function), QStringLiteral("Main Item#a"), arguments, QString()});
    };
    EXPECT_EQ(line("mouseMove", {number(3), number(4)}), QStringLiteral("mouseMove(\"Main Item#a\", 3, 4);"));
    EXPECT_EQ(line("mousePress", {number(3), number(4), shift, left}),
              QStringLiteral("mousePress(\"Main Item#a\", 3, 4, Qt.ShiftModifier, Qt.LeftButton);"));
    EXPECT_EQ(line("mouseRelease", {number(-3), number(400), left}),
              QStringLiteral("mouseRelease(\"Main Item#a\", -3, 400, Qt.LeftButton);"));
    EXPECT_EQ(line("keyPress", {words("<Shift>")}), QStringLiteral("keyPress(\"Main Item#a\", \"<Shift>\");"));
    EXPECT_EQ(line("keyRelease", {words("<Shift>")}), QStringLiteral("keyRelease(\"Main Item#a\", \"<Shift>\");"));
    EXPECT_EQ(line("dragAndDrop", {number(1), number(2), words("Main Item#b"), number(3), number(4)}),
              QStringLiteral("dragAndDrop(\"Main Item#a\", 1, 2, \"Main Item#b\", 3, 4);"));
    EXPECT_EQ(statementText({QStringLiteral("snooze"), QString(), {{QString(), QStringLiteral("double"), 1.25}}, {}}),
              QStringLiteral("snooze(1.25);"));
}

TEST(StatementText, aFunctionHasToBeAPlainIdentifier)
{
    for (const char *name : {"f", "_f", "$f", "mouseClick2"})
        EXPECT_TRUE(statementText({QLatin1String(name), QString(), {}, QString()})) << name;
    for (const char *name : {"", "2f", "f()", "a.b", "f;g", "f\n", "a b"})
        EXPECT_FALSE(statementText({QLatin1String(name), QString(), {}, QString()})) << name;
    EXPECT_FALSE(statementText({QStringLiteral("größe"), QString(), {}, QString()}));
}

TEST(ArgumentText, wholeNumbersAreWrittenInFull)
{
    EXPECT_EQ(text(intType, 0), QStringLiteral("0"));
    EXPECT_EQ(text(intType, std::numeric_limits<int>::min()), QStringLiteral("-2147483648"));
    EXPECT_EQ(text(intType, std::numeric_limits<int>::max()), QStringLiteral("2147483647"));
    EXPECT_EQ(text(intType, qint64(9007199254740993)), QStringLiteral("9007199254740993"));
}

TEST(ArgumentText, numbersWithAFractionKeepTheirValue)
{
    EXPECT_EQ(text(QStringLiteral("double"), 0.1), QStringLiteral("0.1"));
    EXPECT_EQ(text(QStringLiteral("double"), -2.5), QStringLiteral("-2.5"));
    QJSEngine engine;
    for (const double value : {1.0 / 3.0, 1e300, 5e-324, -1e21})
        EXPECT_EQ(engine.evaluate(text(QStringLiteral("double"), value)).toNumber(), value);
}

TEST(ArgumentText, buttonsHaveTheNamesOfQt)
{
    EXPECT_EQ(text(buttonType, 0), QStringLiteral("Qt.NoButton"));
    EXPECT_EQ(text(buttonType, 3), QStringLiteral("Qt.LeftButton|Qt.RightButton"));
    EXPECT_EQ(text(buttonType, 0x40), QStringLiteral("0x40"));
    const QMetaEnum names = QMetaEnum::fromType<Qt::MouseButtons>();
    for (const int value : {1, 2, 4, 8, 16, 32}) {
        const QString name = text(buttonType, value);
        ASSERT_TRUE(name.startsWith(QStringLiteral("Qt.")));
        EXPECT_EQ(names.keyToValue(qPrintable(name.mid(3))), value) << qPrintable(name);
    }
}

TEST(ArgumentText, modifiersHaveTheNamesOfQt)
{
    EXPECT_EQ(text(modifiersType, 0), QStringLiteral("Qt.NoModifier"));
    const QMetaEnum names = QMetaEnum::fromType<Qt::KeyboardModifiers>();
    for (const Qt::KeyboardModifier value : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier,
                                             Qt::KeypadModifier, Qt::GroupSwitchModifier}) {
        const QString name = text(modifiersType, static_cast<int>(value));
        ASSERT_TRUE(name.startsWith(QStringLiteral("Qt.")));
        EXPECT_EQ(names.keyToValue(qPrintable(name.mid(3))), static_cast<int>(value)) << qPrintable(name);
    }
}

TEST(ArgumentText, modifiersAreJoinedInOneOrder)
{
    EXPECT_EQ(text(modifiersType, 0x7e000000),
              QStringLiteral("Qt.ControlModifier|Qt.ShiftModifier|Qt.AltModifier|Qt.MetaModifier|Qt.KeypadModifier|"
                             "Qt.GroupSwitchModifier"));
}

TEST(ArgumentText, bitsWithoutANameAreKeptAsANumber)
{
    EXPECT_EQ(text(modifiersType, 0x04000001), QStringLiteral("Qt.ControlModifier|0x1"));
    EXPECT_EQ(text(modifiersType, 5), QStringLiteral("0x5"));
    EXPECT_EQ(text(modifiersType, std::numeric_limits<int>::min()), QStringLiteral("0x80000000"));
    EXPECT_EQ(text(modifiersType, qint64(0x80000000)), QStringLiteral("0x80000000"));
}

TEST(ArgumentText, windowStatesHaveNames)
{
    EXPECT_EQ(text(stateType, 0), QStringLiteral("WindowState.None"));
    EXPECT_EQ(text(stateType, 1), QStringLiteral("WindowState.Normal"));
    EXPECT_EQ(text(stateType, 2), QStringLiteral("WindowState.Maximize"));
    EXPECT_EQ(text(stateType, 3), QStringLiteral("WindowState.Minimize"));
    EXPECT_EQ(text(stateType, 4), QStringLiteral("WindowState.Fullscreen"));
    EXPECT_EQ(text(stateType, 5), QStringLiteral("5"));
    EXPECT_EQ(text(stateType, -1), QStringLiteral("-1"));
}

TEST(ArgumentText, valuesThatDoNotFitTheirTypeAreWrittenAsTheyAre)
{
    EXPECT_EQ(text(buttonType, QStringLiteral("Left")), QStringLiteral("\"Left\""));
    EXPECT_EQ(text(buttonType, 1.5), QStringLiteral("1.5"));
    EXPECT_EQ(text(modifiersType, 1e12), QStringLiteral("1000000000000"));
    EXPECT_EQ(text(stringType, 5), QStringLiteral("5"));
    EXPECT_EQ(text(intType, QStringLiteral("5")), QStringLiteral("\"5\""));
    EXPECT_EQ(text(QStringLiteral("Unknown"), 5), QStringLiteral("5"));
}

} // namespace
