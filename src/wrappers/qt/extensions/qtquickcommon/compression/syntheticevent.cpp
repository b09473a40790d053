#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/currenttime.h"

#include <utility>

namespace Vantle::QtWrapper {

namespace {

// What is handed over from a record that is moved from: all that owns memory.
struct OwnedParts
{
    explicit OwnedParts(SyntheticEvent &source) noexcept
        : inputMethodText(std::exchange(source.inputMethodText, QByteArray()))
        , text(std::exchange(source.text, QByteArray()))
        , touchPoints(std::exchange(source.touch.points, {}))
        , touchObjectName(std::exchange(source.touch.objectName, QByteArray()))
        , objectName(std::exchange(source.objectName, QByteArray()))
    {
    }

    void handOverTo(SyntheticEvent &target) noexcept
    {
        target.inputMethodText.swap(inputMethodText);
        target.text.swap(text);
        target.touch.points.swap(touchPoints);
        target.touch.objectName.swap(touchObjectName);
        target.objectName.swap(objectName);
    }

    QByteArray inputMethodText;
    QByteArray text;
    std::vector<SyntheticEvent::TouchPoint> touchPoints;
    QByteArray touchObjectName;
    QByteArray objectName;
};

} // namespace

// What only some kinds of events define is left alone.
SyntheticEvent::SyntheticEvent()
    : type(Invalid)
    , ready(false)
    , objectClass(nullptr)
    , x(0)
    , y(0)
    , timestamp(currentTime())
{
}

SyntheticEvent::SyntheticEvent(const SyntheticEvent &) = default;

SyntheticEvent::SyntheticEvent(SyntheticEvent &&other) noexcept : SyntheticEvent()
{
    *this = std::move(other);
}

SyntheticEvent &SyntheticEvent::operator=(const SyntheticEvent &) = default;

SyntheticEvent &SyntheticEvent::operator=(SyntheticEvent &&other) noexcept
{
    // With its texts and points out of the way, what is left of the source is
    // copied: the references to objects stay with both.
    OwnedParts parts(other);
    *this = std::as_const(other);
    parts.handOverTo(*this);
    return *this;
}

SyntheticEvent::~SyntheticEvent() = default;

} // namespace Vantle::QtWrapper
