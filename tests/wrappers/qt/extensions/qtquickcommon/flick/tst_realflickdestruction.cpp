#include "flickscene.h"

#include "support/waiting.h"

#include <gmock/gmock.h>

#include <QtCore/QPointer>

using namespace VantleTest;
using testing::IsEmpty;

namespace {

const QByteArray scene = R"(
    Flickable {
        objectName: "sheet"; anchors.fill: parent; flickDeceleration: 15000; contentHeight: 3000
        Rectangle { objectName: "page"; width: 300; height: 3000; color: "lightgray" }
    })";

enum class Victim {
    Flickable,
    Item,
    Window,
    Recording
};
/// Points of a flick at which the program or the user may take something away.
enum class Moment {
    AfterPress,
    InStart,
    DuringDrag,
    AfterRelease,
    InEnd
};

class DestructionDuringARealFlick
    : public FlickScene
    , public testing::WithParamInterface<std::tuple<Victim, Moment, bool>>
{
protected:
    void at(Moment moment)
    {
        const auto [victim, when, byFinger] = GetParam();
        if (moment != when)
            return;
        // What runs inside a signal of the flickable must not delete it there;
        // programs use deleteLater() for that.
        const bool insideASignal = moment == Moment::InStart || moment == Moment::InEnd;
        switch (victim) {
        case Victim::Flickable: destroy(find("sheet"), insideASignal); break;
        case Victim::Item: destroy(find<QQuickItem>("page"), insideASignal); break;
        case Victim::Window:
            if (insideASignal)
                window.release()->deleteLater();
            else
                window.reset();
            break;
        case Victim::Recording: filter->stop(); break;
        }
    }

private:
    static void destroy(QObject *object, bool later)
    {
        if (later)
            object->deleteLater();
        else
            delete object;
    }
};

} // namespace

TEST_P(DestructionDuringARealFlick, IsSurvived)
{
    const auto [victim, moment, byFinger] = GetParam();
    pointer = byFinger ? Pointer::Finger : Pointer::Mouse;
    show(scene);
    const QPointer<QQuickFlickable> sheet = find("sheet");
    bool ended = false;
    QObject::connect(sheet, &QQuickFlickable::movementStarted, sheet, [this] { at(Moment::InStart); });
    QObject::connect(sheet, &QQuickFlickable::movementEnded, sheet, [this, &ended] {
        ended = true;
        at(Moment::InEnd);
    });

    press({100, 250});
    at(Moment::AfterPress);
    for (int y = 240; y >= 100 && window; y -= 20) {
        move({100, y});
        if (y == 160)
            at(Moment::DuringDrag);
    }
    if (window)
        release({100, 100});
    at(Moment::AfterRelease);
    const bool dies = victim == Victim::Flickable || victim == Victim::Window;
    EXPECT_TRUE(waitUntil([&] { return dies ? !sheet : ended; }));
    EXPECT_THAT(log.warnings, IsEmpty());

    // Whatever was lost, the next recording starts clean.
    finish();
    window.reset();
    show(scene);
    const QPointer<QQuickFlickable> next = find("sheet");
    drag({100, 250}, {100, 100});
    ASSERT_TRUE(waitForRest(next));
    EXPECT_EQ(finish().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(AtEveryPoint, DestructionDuringARealFlick,
                         testing::Combine(testing::Values(Victim::Flickable, Victim::Item, Victim::Window,
                                                          Victim::Recording),
                                          testing::Values(Moment::AfterPress, Moment::InStart, Moment::DuringDrag,
                                                          Moment::AfterRelease, Moment::InEnd),
                                          testing::Bool()));
