#include "agent/eventwatcher.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"

#include <QtGui/QEvent>
#include <QtGui/QGuiApplication>

namespace Vantle::Agent {

namespace {

bool concernsUs(QObject *receiver, QEvent *event)
{
    if (event->type() == QEvent::InputMethod)
        return receiver == QGuiApplication::focusObject();
    return event->spontaneous() && receiver->isWindowType();
}

} // namespace

EventWatcher::EventWatcher() = default;

EventWatcher::~EventWatcher()
{
    stop();
}

void EventWatcher::start()
{
    m_recorder = QtWrapper::QtEventRecorder::instance();
    qApp->installEventFilter(this);
}

void EventWatcher::stop()
{
    if (!m_recorder)
        return;
    if (qApp)
        qApp->removeEventFilter(this);
    m_recorder->flushEventQueue();
    m_recorder = nullptr;
}

bool EventWatcher::eventFilter(QObject *receiver, QEvent *event)
{
    if (!concernsUs(receiver, event))
        return false;
    QtWrapper::SyntheticEvent record;
    if (QtWrapper::qtEventToSyntheticEvent(receiver, event, &record))
        m_recorder->eatEvent(record);
    return false;
}

} // namespace Vantle::Agent
