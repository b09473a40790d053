#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"

#include "hook/eventdata.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qtalarmclock.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qtstatementrecorder.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>

namespace Vantle::QtWrapper {

namespace {

/// The live recorder, not owned.
QtEventRecorder *liveRecorder = nullptr;

/// Null without a QGuiApplication.
const QStyleHints *styleHints()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) ? QGuiApplication::styleHints() : nullptr;
}

} // namespace

SharedPtr<QtEventRecorder> QtEventRecorder::instance()
{
    if (!liveRecorder)
        new QtEventRecorder; // registers itself, and is owned by whoever holds it
    return SharedPtr<QtEventRecorder>(liveRecorder);
}

QtEventRecorder::QtEventRecorder()
{
    liveRecorder = this;
    const WrapperConfig *config = Application::self()->wrapperConfig();

    auto statementRecorder = std::make_unique<QtStatementRecorder>();
    statementRecorder->setClassesWithoutCoordinates(config->classesWithoutCoordinates);

    compressor = std::make_unique<EventCompressor>(statementRecorder.release(), this);
    compressor->addObserver(this);
    compressor->setDebugLevel(config->compressionDebugLevel);

    alarmClock = std::make_unique<QtAlarmClock>(nullptr, compressor.get());
    compressor->setAlarmClock(alarmClock.get());
}

QtEventRecorder::~QtEventRecorder()
{
    compressor.reset();
    alarmClock.reset();
    liveRecorder = nullptr;
}

void QtEventRecorder::eatEvent(const SyntheticEvent &event)
{
    compressor->eatEvent(event);
}

void QtEventRecorder::flushEventQueue()
{
    compressor->finishCompression();
    compressor->resetInput();
}

void QtEventRecorder::handleCompressedEvent(const EventData &statement)
{
    Application::self()->recordEvent(statement);
}

qint32 QtEventRecorder::dragDistance() const
{
    const QStyleHints *hints = styleHints();
    return hints ? hints->startDragDistance() : 4;
}

quint32 QtEventRecorder::doubleClickTime() const
{
    const QStyleHints *hints = styleHints();
    return hints ? static_cast<quint32>(hints->mouseDoubleClickInterval()) : 400;
}

} // namespace Vantle::QtWrapper
