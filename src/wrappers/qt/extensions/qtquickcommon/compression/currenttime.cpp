#include "wrappers/qt/extensions/qtquickcommon/compression/currenttime.h"

#include <QtCore/QDateTime>

namespace Vantle::QtWrapper {

namespace {

TimeSource timeSource = nullptr;

} // namespace

quint64 currentTime()
{
    return timeSource ? timeSource() : static_cast<quint64>(QDateTime::currentMSecsSinceEpoch());
}

void setTimeSource(TimeSource source)
{
    timeSource = source;
}

} // namespace Vantle::QtWrapper
