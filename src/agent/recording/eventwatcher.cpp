#include "agent/recording/eventwatcher.h"

#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qtquickflickeventgenerator.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/objectnamecache.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/private/qwindow_p.h>

#include <optional>

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

// Statements take their names from the event that begins a pattern, which a
// move never does: for moves, which come by the hundred, no name is verified.
bool isMove(const QEvent &event)
{
    return event.type() == QEvent::MouseMove || event.type() == QEvent::TouchUpdate;
}

bool translate(QObject *receiver, QEvent *event, QtWrapper::SyntheticEvent *record)
{
    std::optional<QtWrapper::UnverifiedNames> unverified;
    if (isMove(*event))
        unverified.emplace();
    return QtWrapper::qtEventToSyntheticEvent(receiver, event, record);
}

} // namespace

EventWatcher::EventWatcher(std::chrono::milliseconds settlingTime) : m_settling(settlingTime)
{
}

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
    m_settling.start();
    qApp->installEventFilter(this);
    // What a script plays is recorded like a user's input, but statement by
    // statement: a script has its clicks follow each other faster.
    QtWrapper::InputPlayer::setBeforeAction([this] { flush(); });
}

void EventWatcher::stop()
{
    if (!m_recorder)
        return;
    QtWrapper::InputPlayer::setBeforeAction({});
    if (qApp)
        qApp->removeEventFilter(this);
    // Before the flush, so that nothing new comes in behind it.
    m_flickGenerator.reset();
    flush();
    m_recorder = nullptr;
    m_modifiers.reset();
    m_settling.stop();
}

bool EventWatcher::eventFilter(QObject *receiver, QEvent *event)
{
    m_settling.note(receiver, *event);
    if (!concernsUs(receiver, event) || m_settling.isSettling(receiver, *event))
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
    const QList<Qt::Key> stillHeld = ModifierTracker::keysHeldIn(event);
    flush();
    m_modifiers.reset();
    for (Qt::Key key : stillHeld) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        record(receiver, &press);
    }
}

void EventWatcher::flush()
{
    // A flush gives the queue one statement. An event that belongs to no pattern
    // ends whatever is waiting for more, and gives it all that it holds.
    QtWrapper::SyntheticEvent end;
    end.objectClass = nullptr;
    m_recorder->eatEvent(end);
    m_recorder->flushEventQueue();
}

void EventWatcher::record(QObject *receiver, QEvent *event)
{
    QtWrapper::SyntheticEvent record;
    if (!translate(receiver, event, &record) || !m_keyReleases.correct(*event, &record))
        return;
    m_modifiers.noteRecord(record);
    // The flickables have to be watched before the press gets to them.
    m_flickGenerator->peekSyntheticEvent(record);
    m_recorder->eatEvent(record);
}

} // namespace Vantle::Agent
