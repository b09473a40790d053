#include "agent/eventwatcher.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qtquickflickeventgenerator.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/private/qwindow_p.h>

namespace Vantle::Agent {

namespace {

// The program closes a window by the same event as the user. Replayed after
// the click that made it do so, it would find the window gone.
bool isClosedByProgram(QObject *window, QEvent *event)
{
    return event->type() == QEvent::Close && QWindowPrivate::get(static_cast<QWindow *>(window))->inClose;
}

bool concernsUs(QObject *receiver, QEvent *event)
{
    if (event->type() == QEvent::InputMethod)
        return receiver == QGuiApplication::focusObject();
    return event->spontaneous() && receiver->isWindowType() && !isClosedByProgram(receiver, event);
}

} // namespace

EventWatcher::EventWatcher() = default;

EventWatcher::~EventWatcher()
{
    stop();
}

void EventWatcher::start()
{
    if (m_recorder)
        return;
    m_recorder = QtWrapper::QtEventRecorder::instance();
    m_flickGenerator = std::make_unique<QtWrapper::QtQuickFlickEventGenerator>(m_recorder);
    qApp->installEventFilter(this);
}

void EventWatcher::stop()
{
    if (!m_recorder)
        return;
    if (qApp)
        qApp->removeEventFilter(this);
    // Before the flush, so that nothing new comes in behind it.
    m_flickGenerator.reset();
    m_recorder->flushEventQueue();
    m_recorder = nullptr;
    m_modifiers.reset();
}

bool EventWatcher::eventFilter(QObject *receiver, QEvent *event)
{
    if (!concernsUs(receiver, event))
        return false;
    if (event->isInputEvent())
        correctModifiers(receiver, *static_cast<QInputEvent *>(event));
    record(receiver, event);
    return false;
}

void EventWatcher::correctModifiers(QObject *receiver, const QInputEvent &event)
{
    if (!m_modifiers.isContradictedBy(event))
        return;
    // The release of the modifier has ended every pattern but a run of typed
    // text, and that is ended by the pointer event itself: the flush loses nothing.
    const QList<Qt::Key> stillHeld = m_modifiers.keysHeldIn(event);
    m_recorder->flushEventQueue();
    m_modifiers.reset();
    for (Qt::Key key : stillHeld) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        record(receiver, &press);
    }
}

void EventWatcher::record(QObject *receiver, QEvent *event)
{
    QtWrapper::SyntheticEvent record;
    if (!QtWrapper::qtEventToSyntheticEvent(receiver, event, &record))
        return;
    m_modifiers.noteRecord(record);
    // The flickables have to be watched before the press gets to them.
    m_flickGenerator->peekSyntheticEvent(record);
    m_recorder->eatEvent(record);
}

} // namespace Vantle::Agent
