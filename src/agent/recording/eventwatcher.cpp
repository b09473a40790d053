#include "agent/recording/eventwatcher.h"

#include "wrappers/qt/extensions/qtquick/inputdelivery.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qtquickflickeventgenerator.h"
#include "wrappers/qt/functions/inputplayer.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QStyleHints>
#include <QtGui/private/qwindow_p.h>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <utility>

namespace Vantle::Agent {

namespace {

using QtWrapper::SyntheticEvent;

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

/// Texts of input methods go to the item with the focus. As with keys, the
/// control is meant that this item is part of, so they are taken for the window's.
QObject *receiverOf(QObject *receiver, const QEvent &event)
{
    const auto *const item = event.type() == QEvent::InputMethod ? qobject_cast<QQuickItem *>(receiver) : nullptr;
    return item && item->window() ? item->window() : receiver;
}

int dragDistance()
{
    return QGuiApplication::styleHints()->startDragDistance();
}

} // namespace

/// Gives records to the recorder.
class EventWatcher::LineEnd final : public RecordStage
{
public:
    explicit LineEnd(SharedPtr<QtWrapper::QtEventRecorder> recorder) : m_recorder(std::move(recorder)) {}
    void take(const SyntheticEvent &record) override { m_recorder->eatEvent(record); }

private:
    SharedPtr<QtWrapper::QtEventRecorder> m_recorder;
};

EventWatcher::EventWatcher(std::chrono::milliseconds settlingTime)
    : m_settling(settlingTime)
    , m_windows([this](QWindow *window, QEvent *event) { record(window, event); }, settlingTime)
    , m_pointer(&m_texts, [this](const SyntheticEvent &foreseen) { m_flickGenerator->peekSyntheticEvent(foreseen); })
    , m_drags(dragDistance)
{
    m_texts.setNext(&m_drags);
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
    m_end = std::make_unique<LineEnd>(m_recorder);
    m_drags.setNext(m_end.get());
    m_settling.start();
    m_windows.start();
    qApp->installEventFilter(this);
    // What a script plays is recorded like a user's input, but statement by
    // statement: a script has its clicks follow each other faster.
    QtWrapper::InputPlayer::setBeforeAction([this] {
        flush();
        m_keyReleases = KeyReleases();
    });
}

void EventWatcher::stop()
{
    if (!m_recorder)
        return;
    QtWrapper::InputPlayer::setBeforeAction({});
    if (qApp)
        qApp->removeEventFilter(this);
    // While the flickables are still watched, and before the flush, so that
    // nothing new comes in behind it.
    letGo();
    m_flickGenerator.reset();
    flush();
    m_drags.setNext(nullptr);
    m_end.reset();
    m_recorder = nullptr;
    m_keyReleases = KeyReleases();
    m_pointer.reset();
    m_windows.stop();
    m_settling.stop();
}

bool EventWatcher::eventFilter(QObject *receiver, QEvent *event)
{
    m_settling.note(receiver, *event);
    if (concernsUs(receiver, event))
        takeEvent(receiver, event);
    else if (receiver->isQuickItemType())
        m_pointer.noteDelivery(receiver, *event);
    return false;
}

void EventWatcher::takeEvent(QObject *receiver, QEvent *event)
{
    auto *const window = qobject_cast<QWindow *>(receiver);
    m_windows.lookForWishes();
    if (window && m_windows.take(window, event, m_settling.isSettling(receiver, *event)))
        return;
    if (event->isInputEvent() && event->type() != QEvent::MouseMove) {
        m_windows.letGo();
        m_windows.noteInput();
    }
    if (event->isInputEvent())
        correctModifiers(receiver, *static_cast<QInputEvent *>(event));
    if (!window || !m_pointer.take(window, event))
        record(receiver, event);
}

void EventWatcher::correctModifiers(QObject *receiver, const QInputEvent &event)
{
    if (m_modifiers.isContradictedBy(event))
        flush();
    const QList<Qt::Key> missing = m_modifiers.keysMissingFor(event);
    for (Qt::Key key : missing) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        record(receiver, &press);
    }
}

/// Ends whatever is waiting for more, and gives it all that it holds.
void EventWatcher::flush()
{
    letGo();
    // A flush gives the queue one statement. An event that belongs to no pattern
    // gives it all of them.
    SyntheticEvent end;
    end.objectClass = nullptr;
    m_recorder->eatEvent(end);
    m_recorder->flushEventQueue();
    m_modifiers.reset();
}

void EventWatcher::letGo()
{
    m_pointer.complete();
    m_windows.letGo();
    m_texts.letGo();
    m_drags.letGo();
}

void EventWatcher::record(QObject *receiver, QEvent *event)
{
    m_pointer.complete();
    SyntheticEvent record;
    const auto delivery = QtWrapper::InputDelivery::toFocus();
    if (!QtWrapper::qtEventToSyntheticEvent(receiverOf(receiver, *event), event, &record)
        || !m_keyReleases.correct(*event, &record))
        return;
    m_modifiers.noteRecord(record);
    m_texts.take(record);
}

} // namespace Vantle::Agent
