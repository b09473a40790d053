#include "wrappers/qt/extensions/qtquickcommon/diagnostics/tracing.h"

#include "tracelib/configuration.h"

#include <QtCore/QDebug>
#include <QtCore/QPointF>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickflickable_p.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdlib>
#include <limits>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using namespace Vantle::QtQuickCommon;
using corvaline::tracelib::AbstractVariable;
using corvaline::tracelib::TracePoint;
using corvaline::tracelib::TracePointType;
using corvaline::tracelib::VariableSnapshot;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Visit
{
    const TracePoint *point;
    std::string text;
    VariableSnapshot *snapshot;
};

class Tracing : public testing::Test
{
protected:
    Tracing()
    {
        corvaline::tracelib::setSink([this](const TracePoint &point, const char *text, VariableSnapshot *snapshot) {
            visits.push_back({&point, text, snapshot});
        });
        corvaline::tracelib::setGroups("qtquick");
    }
    ~Tracing() override
    {
        corvaline::tracelib::setGroups("");
        corvaline::tracelib::setSink({});
    }

    std::vector<std::string> takeTexts()
    {
        std::vector<std::string> texts;
        for (const Visit &visit : visits)
            texts.push_back(visit.text);
        visits.clear();
        return texts;
    }

    std::vector<Visit> visits;
};

std::string textOf(const VariableValue &value)
{
    std::string text(VariableValue::convertToString(value, nullptr, 0), '\0');
    VariableValue::convertToString(value, text.data(), text.size());
    text.pop_back();
    return text;
}

/// What Qt itself makes of a value in a debug line.
template<typename T>
std::string qtDebugText(T value)
{
    QString text;
    QDebug(&text).nospace() << value;
    return text.toStdString();
}

std::string addressText(const void *pointer, std::size_t length = 10)
{
    std::ostringstream stream;
    stream << std::hex;
    stream.fill('0');
    stream.width(8);
    stream << reinterpret_cast<std::uintptr_t>(pointer);
    return ("0x" + stream.str()).substr(0, length);
}

class PlainClass
{
};

class DerivedItem : public QQuickItem
{
};

int evaluations = 0;

const char *evaluated(const char *text)
{
    ++evaluations;
    return text;
}

// Two statements that say the same, in the branches of one function.
void chooseBranch(bool first)
{
    if (first)
        VANTLE_TRACE("branch");
    else
        VANTLE_TRACE("branch");
}

int liveVariables = 0;

class CountedVariable : public AbstractVariable
{
public:
    CountedVariable() { ++liveVariables; }
    ~CountedVariable() override { --liveVariables; }
    const char *name() const override { return "counted"; }
    VariableValue value() const override { return VariableValue::numberValue(0); }
};

} // namespace

TEST_F(Tracing, deliversThePiecesInOrderWithoutBlanksOfItsOwn)
{
    QQuickItem item;
    const std::string className = "PanelHook";
    VANTLE_TRACE("Got container " << &item << " from " << className.c_str() << ".containerTypes");
    EXPECT_THAT(takeTexts(), ElementsAre("Got container " + qtDebugText(&item) + " from PanelHook.containerTypes"));
}

TEST_F(Tracing, tellsThePlaceOfTheStatement)
{
    const unsigned int line = __LINE__ + 1;
    VANTLE_TRACE("here");
    ASSERT_EQ(visits.size(), 1u);
    const TracePoint &point = *visits.front().point;
    EXPECT_EQ(point.type, 3u);
    EXPECT_STREQ(point.file, __FILE__);
    EXPECT_EQ(point.line, line);
    EXPECT_STREQ(point.function, static_cast<const char *>(__PRETTY_FUNCTION__));
    EXPECT_STREQ(point.group, "qtquick");
    EXPECT_EQ(visits.front().snapshot, nullptr);
}

TEST_F(Tracing, deliversTheEmptyTextForAStatementWithoutPieces)
{
    VANTLE_TRACE();
    EXPECT_THAT(takeTexts(), ElementsAre(""));
}

TEST_F(Tracing, deliversTheEmptyTextForARecorderWithoutPieces)
{
    TracePoint point(TracePointType::Detail, "f.cpp", 1, "f", "qtquick");
    TraceRecorder recorder(&point);
    ASSERT_TRUE(advanceVisit(&point));
    recorder.finish();
    EXPECT_EQ(recorder.text, nullptr);
    EXPECT_EQ(recorder.message(), "");
    EXPECT_THAT(takeTexts(), ElementsAre(""));
}

TEST_F(Tracing, evaluatesNoPieceWhileTheGroupIsOff)
{
    evaluations = 0;
    for (const char *groups : {"", "other"}) {
        corvaline::tracelib::setGroups(groups);
        VANTLE_TRACE("a" << evaluated("b") << evaluated("c"));
        EXPECT_EQ(evaluations, 0) << groups;
    }
    EXPECT_THAT(takeTexts(), IsEmpty());
    corvaline::tracelib::setGroups("qtquick");
    VANTLE_TRACE("a" << evaluated("b") << evaluated("c"));
    EXPECT_EQ(evaluations, 2);
    EXPECT_THAT(takeTexts(), ElementsAre("abc"));
}

TEST_F(Tracing, leavesADanglingPieceAloneWhileTheGroupIsOff)
{
    corvaline::tracelib::setGroups("");
    // Volatile, so that the compiler doesn't see what is wrong here on purpose.
    QQuickItem *volatile item = new QQuickItem;
    QString *volatile text = new QString(QStringLiteral("text"));
    delete item;
    delete text;
    VANTLE_TRACE("item " << static_cast<QQuickItem *>(item) << *text);
    EXPECT_THAT(takeTexts(), IsEmpty());
}

TEST_F(Tracing, deliversNothingIfThePointIsSilencedWhileTheTextIsBuilt)
{
    TracePoint point(TracePointType::Detail, "f.cpp", 1, "f", "qtquick");
    TraceRecorder recorder(&point);
    ASSERT_TRUE(advanceVisit(&point));
    recorder << "text";
    point.active = false;
    recorder.finish();
    ASSERT_NE(recorder.text, nullptr);
    EXPECT_EQ(recorder.text->str(), "text");
    EXPECT_THAT(takeTexts(), IsEmpty());
}

TEST_F(Tracing, keepsAPointForEachOfTwoStatementsThatSayTheSame)
{
    chooseBranch(true);
    chooseBranch(false);
    chooseBranch(true);
    ASSERT_EQ(visits.size(), 3u);
    EXPECT_NE(visits[0].point, visits[1].point);
    EXPECT_EQ(visits[0].point, visits[2].point);
    EXPECT_STREQ(visits[0].point->function, visits[1].point->function);
    EXPECT_NE(visits[0].point->line, visits[1].point->line);
}

TEST_F(Tracing, leavesAStatementOnWhenItsNeighbourIsSwitchedOff)
{
    chooseBranch(true);
    chooseBranch(false);
    ASSERT_EQ(visits.size(), 2u);
    const_cast<TracePoint *>(visits[0].point)->active = false;
    visits.clear();
    chooseBranch(true);
    EXPECT_THAT(takeTexts(), IsEmpty());
    chooseBranch(false);
    EXPECT_THAT(takeTexts(), ElementsAre("branch"));
}

TEST_F(Tracing, isOneStatementToTheLanguage)
{
    for (const bool flag : {true, false})
        if (flag)
            VANTLE_TRACE("then");
        else
            VANTLE_TRACE("else" << (flag ? ", never" : "") << '.' - '0');
    EXPECT_THAT(takeTexts(), ElementsAre("then", "else-2"));
}

TEST_F(Tracing, startsNoTextBeforeTheFirstPiece)
{
    TracePoint point(TracePointType::Detail, "f.cpp", 1, "f", "qtquick");
    TraceRecorder recorder(&point);
    EXPECT_EQ(recorder.point, &point);
    EXPECT_EQ(recorder.text, nullptr);
    EXPECT_EQ(recorder.snapshot, nullptr);
    recorder << "";
    EXPECT_NE(recorder.text, nullptr);
}

TEST_F(Tracing, handsOnItsSnapshotAndDeletesItWithItsVariables)
{
    TracePoint point(TracePointType::Detail, "f.cpp", 1, "f", "qtquick");
    VariableSnapshot *const snapshot = new VariableSnapshot;
    {
        TraceRecorder recorder(&point);
        recorder.snapshot = snapshot;
        snapshot->add(new CountedVariable);
        snapshot->add(new CountedVariable);
        snapshot->add(nullptr);
        ASSERT_TRUE(advanceVisit(&point));
        recorder.finish();
        EXPECT_EQ(liveVariables, 2);
    }
    EXPECT_EQ(liveVariables, 0);
    ASSERT_EQ(visits.size(), 1u);
    EXPECT_EQ(visits[0].snapshot, snapshot);
}

TEST_F(Tracing, cleansUpWhenAPieceThrows)
{
    TracePoint point(TracePointType::Detail, "f.cpp", 1, "f", "qtquick");
    const auto throwingPiece = []() -> const char * { throw std::runtime_error("piece"); };
    const auto statement = [&] {
        TraceRecorder recorder(&point);
        recorder.snapshot = new VariableSnapshot;
        recorder.snapshot->add(new CountedVariable);
        recorder << "before" << throwingPiece();
    };
    EXPECT_THROW(statement(), std::runtime_error);
    EXPECT_EQ(liveVariables, 0);
    EXPECT_THROW(VANTLE_TRACE("before " << throwingPiece() << evaluated("after")), std::runtime_error);
    EXPECT_THAT(takeTexts(), IsEmpty());
}

TEST_F(Tracing, evaluatesEachPieceOnlyAfterTheOneBeforeIt)
{
    std::string order;
    const auto piece = [&order](const char *text) {
        order += text;
        return text;
    };
    VANTLE_TRACE(piece("1") << piece("2") << piece("3"));
    EXPECT_EQ(order, "123");
    EXPECT_THAT(takeTexts(), ElementsAre("123"));
}

TEST_F(Tracing, passesOnWhatTheSinkThrows)
{
    corvaline::tracelib::setSink(
        [](const TracePoint &, const char *, VariableSnapshot *) { throw std::runtime_error("sink"); });
    EXPECT_THROW(VANTLE_TRACE("text"), std::runtime_error);
}

TEST(ToVariableValue, takesTextsAsTheyAre)
{
    char buffer[] = "changeable";
    const char *none = nullptr;
    EXPECT_EQ(textOf(toVariableValue("literal")), "literal");
    EXPECT_EQ(textOf(toVariableValue(static_cast<const char *>(buffer))), "changeable");
    EXPECT_EQ(textOf(toVariableValue(buffer)), "changeable");
    EXPECT_EQ(textOf(toVariableValue("")), "");
    EXPECT_EQ(textOf(toVariableValue(none)), "");
}

TEST(ToVariableValue, takesNumbersAndTruthValuesApart)
{
    EXPECT_EQ(textOf(toVariableValue(-5LL)), "-5");
    EXPECT_EQ(textOf(toVariableValue(1)), "1");
    EXPECT_EQ(textOf(toVariableValue(std::size_t(7))), "7");
    EXPECT_EQ(textOf(toVariableValue(std::numeric_limits<long long>::min())), "-9223372036854775808");
    EXPECT_EQ(textOf(toVariableValue(true)), "true");
    EXPECT_EQ(textOf(toVariableValue(false)), "false");
}

TEST(ToVariableValue, printsPointersWithAtLeastEightLowerCaseDigits)
{
    EXPECT_EQ(textOf(toVariableValue(reinterpret_cast<PlainClass *>(0xABCDu))), "0x0000abcd");
    EXPECT_EQ(textOf(toVariableValue(static_cast<PlainClass *>(nullptr))), "0x00000000");
    EXPECT_EQ(textOf(toVariableValue(reinterpret_cast<const PlainClass *>(0xFFFFFFFFu))), "0xffffffff");
}

TEST(ToVariableValue, cutsAddressesOfMoreThanEightDigits)
{
    if constexpr (sizeof(std::uintptr_t) > 4) {
        EXPECT_EQ(textOf(toVariableValue(reinterpret_cast<PlainClass *>(std::uintptr_t(0x123456789ABC)))),
                  "0x12345678");
        EXPECT_EQ(textOf(toVariableValue(reinterpret_cast<PlainClass *>(std::uintptr_t(0x987654321)))), "0x98765432");
    }
}

TEST(ToVariableValue, printsItemsAsQtDoes)
{
    QQuickItem item;
    item.setObjectName(QStringLiteral("named"));
    item.setSize(QSizeF(3, 4));
    EXPECT_EQ(textOf(toVariableValue(&item)), qtDebugText(&item));
    EXPECT_THAT(textOf(toVariableValue(&item)), testing::HasSubstr("named"));
    EXPECT_EQ(textOf(toVariableValue(static_cast<const QQuickItem *>(&item))), qtDebugText(&item));
    DerivedItem derived;
    EXPECT_EQ(textOf(toVariableValue(static_cast<QQuickItem *>(&derived))), qtDebugText<QQuickItem *>(&derived));
}

TEST(ToVariableValue, printsANullItemAsQtDoes)
{
    QQuickItem *none = nullptr;
    EXPECT_EQ(textOf(toVariableValue(none)), qtDebugText(none));
    EXPECT_NE(textOf(toVariableValue(none)), "");
}

TEST(ToVariableValue, printsWindowsAsQtDoes)
{
    QQuickWindow window;
    window.setTitle(QStringLiteral("title"));
    QQuickWindow *none = nullptr;
    EXPECT_EQ(textOf(toVariableValue(&window)), qtDebugText<const QQuickWindow *>(&window));
    EXPECT_EQ(textOf(toVariableValue(none)), qtDebugText<const QQuickWindow *>(none));
}

TEST(ToVariableValue, printsAFlickableAndOtherSubclassesByTheirAddress)
{
    QQuickFlickable flickable;
    DerivedItem derived;
    QObject object;
    EXPECT_EQ(textOf(toVariableValue(&flickable)), addressText(&flickable));
    EXPECT_EQ(textOf(toVariableValue(static_cast<const QQuickFlickable *>(&flickable))), addressText(&flickable));
    EXPECT_EQ(textOf(toVariableValue(&derived)), addressText(&derived));
    EXPECT_EQ(textOf(toVariableValue(&object)), addressText(&object));
}

TEST(ToVariableValue, printsAGuardLikeWhatItGuards)
{
    QQuickFlickable flickable;
    QQuickItem item;
    EXPECT_EQ(textOf(toVariableValue(QPointer<QQuickFlickable>(&flickable))), addressText(&flickable));
    EXPECT_EQ(textOf(toVariableValue(QPointer<QQuickItem>(&item))), qtDebugText(&item));
    EXPECT_EQ(textOf(toVariableValue(QPointer<QQuickFlickable>())), "0x00000000");
}

TEST(ToVariableValue, printsPointsAsQtDoes)
{
    EXPECT_EQ(textOf(toVariableValue(QPointF(1.5, -2))), "QPointF(1.5,-2)");
}

TEST(ToVariableValue, takesTextInUtf8UpToAZeroCharacter)
{
    EXPECT_EQ(textOf(toVariableValue(QString())), "");
    EXPECT_EQ(textOf(toVariableValue(QStringLiteral("gr\u00fc\u00df"))), "gr\xc3\xbc\xc3\x9f");
    EXPECT_EQ(textOf(toVariableValue(QStringLiteral("a\0b"))), "a");
}

TEST(ToVariableValue, givesTextForAListOfExactlyOneEntry)
{
    EXPECT_EQ(textOf(toVariableValue(QStringList())), "");
    EXPECT_EQ(textOf(toVariableValue(QStringList{QStringLiteral("one")})), "one");
    EXPECT_EQ(textOf(toVariableValue(QList<QString>{QStringLiteral("one"), QStringLiteral("two")})), "");
}
