#include "agent/recording/eventwatcher.h"

#include "agent/recording/hoststatements.h"
#include "wrappers/qt/extensions/qtquick/inputdelivery.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qtquickflickeventgenerator.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QDropEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QStyleHints>
#include <QtGui/QWheelEvent>
#include <QtGui/private/qwindow_p.h>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <optional>
#include <utility>

namespace Vantle::Agent {

namespace {

using QtWrapper::SyntheticEvent;

// By this event a timer of QML that runs once calls the program.
constexpr auto timerTriggered = static_cast<QEvent::Type>(QEvent::User + 2);

// Between two keys that are typed in one go passes less.
constexpr qint64 pauseInText = 300;

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

/// A record of \p scenePoint of the window of \p item, in which nothing happens.
/// Nothing for null.
std::optional<SyntheticEvent> recordOfPlace(QQuickItem *item, QPointF scenePoint)
{
    if (!item || !item->window())
        return std::nullopt;
    const QPointF global = item->window()->mapToGlobal(scenePoint);
    QMouseEvent press(QEvent::MouseButtonPress, scenePoint, scenePoint, global, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    const auto delivery = QtWrapper::InputDelivery::toItem(item);
    SyntheticEvent record;
    if (!QtWrapper::qtEventToSyntheticEvent(item->window(), &press, &record))
        return std::nullopt;
    return record;
}

int dragDistance()
{
    return QGuiApplication::styleHints()->startDragDistance();
}

/// The threshold of a mouse area that drags an item smoothly: it moves it only by
/// what comes behind the move that was beyond. Nothing for anything else.
std::optional<int> lossOf(const SyntheticEvent &press)
{
    const auto *const area = qobject_cast<QQuickItem *>(QtWrapper::nativeQObject(press.object));
    if (!area || !area->inherits("QQuickMouseArea"))
        return std::nullopt;
    const QObject *const drag = area->property("drag").value<QObject *>();
    const bool isSmooth = drag && drag->property("target").value<QObject *>() && drag->property("smoothed").toBool();
    return isSmooth ? std::optional(qRound(drag->property("threshold").toReal())) : std::nullopt;
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
    , m_pointer(
          &m_ledger,
          [this](const SyntheticEvent &foreseen) {
              m_flickGenerator->peekSyntheticEvent(foreseen);
              m_ledger.foresee(foreseen);
          },
          [this](QQuickItem *item) { recordHover(item); })
    , m_ledger(dragDistance)
    , m_patterns(
          [this](const SyntheticEvent &beginning) {
              m_ledger.claim(beginning);
              flush();
          },
          dragDistance)
    , m_drags(dragDistance, lossOf)
{
    m_ledger.setNext(&m_texts);
    m_texts.setNext(&m_patterns);
    m_patterns.setNext(&m_drags);
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
    m_patterns.reset();
    m_hover.reset();
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
    else if (event->type() == QEvent::Drop && receiver->isWindowType())
        takeDrop(static_cast<QWindow *>(receiver), *static_cast<QDropEvent *>(event));
    else if (event->type() == timerTriggered && receiver->inherits("QQmlTimer"))
        endTextAtTimer();
    return false;
}

void EventWatcher::takeEvent(QObject *receiver, QEvent *event)
{
    auto *const window = qobject_cast<QWindow *>(receiver);
    m_windows.lookForWishes();
    m_shortcuts.look();
    if (window && m_windows.take(window, event, m_settling.isSettling(receiver, *event)))
        return;
    if (event->type() == QEvent::Close)
        m_windows.letGo();
    if (event->isInputEvent()) {
        noteInput(window, event);
        correctModifiers(receiver, *static_cast<QInputEvent *>(event));
    }
    if (!window || !m_pointer.take(window, event))
        record(receiver, event);
}

void EventWatcher::noteInput(QWindow *window, QEvent *event)
{
    if (event->type() == QEvent::MouseMove) {
        const auto *const move = static_cast<QMouseEvent *>(event);
        auto *const quickWindow = qobject_cast<QQuickWindow *>(window);
        if (quickWindow && move->buttons() == Qt::NoButton)
            m_hover.noteMove(quickWindow, move->scenePosition());
        return;
    }
    m_windows.letGo();
    m_windows.noteInput();
    switch (event->type()) {
    case QEvent::Wheel:
        if (m_wheels.beginsAnew(*static_cast<QWheelEvent *>(event)))
            flush();
        m_hover.reset();
        break;
    case QEvent::MouseButtonPress: forgetStalePress(*static_cast<QMouseEvent *>(event)); break;
    case QEvent::KeyRelease: recordKeyOfShortcut(window, *static_cast<QKeyEvent *>(event)); break;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        m_sinceKey.start();
        m_hover.reset();
        break;
    case QEvent::TouchBegin:
    case QEvent::MouseButtonRelease: m_hover.reset(); break;
    default: break;
    }
}

/// A press whose release never came, as when the window system has dragged
/// something to a place that takes no drops, must not cost the next one.
void EventWatcher::forgetStalePress(const QMouseEvent &press)
{
    if (!m_patterns.isPressed() || press.buttons() != press.button())
        return;
    flush();
    m_patterns.reset();
    m_pointer.reset();
}

void EventWatcher::recordKeyOfShortcut(QObject *receiver, const QKeyEvent &release)
{
    if (m_keyReleases.knows(release) || !m_shortcuts.takeRelease(release))
        return;
    QKeyEvent press(QEvent::KeyPress, release.key(), m_shortcuts.modifiersOf(release), release.nativeScanCode(),
                    release.nativeVirtualKey(), release.nativeModifiers(), release.text());
    record(receiver, &press);
}

/// The places that had to be hovered for \p pressed to be there.
void EventWatcher::recordHover(QQuickItem *pressed)
{
    const QList<HoverPath::Stop> stops = m_hover.stopsFor(pressed);
    m_hover.reset();
    if (stops.isEmpty())
        return;
    flush();
    for (const HoverPath::Stop &stop : stops) {
        if (const std::optional<SyntheticEvent> place = recordOfPlace(stop.item, stop.scenePoint))
            HostStatements::mouseMove(*place);
    }
}

/// A timer with which the program waited for the user to stop typing: what comes
/// next is another text, to which the program will react anew.
void EventWatcher::endTextAtTimer()
{
    if (m_texts.isHolding() && m_sinceKey.isValid() && m_sinceKey.elapsed() >= pauseInText)
        flush();
}

void EventWatcher::takeDrop(QWindow *window, const QDropEvent &event)
{
    auto *const quickWindow = qobject_cast<QQuickWindow *>(window);
    if (!quickWindow || !m_patterns.isPressed())
        return;
    QQuickItem *const taker = QtWrapper::dropTakerAt(quickWindow, event.position());
    if (const std::optional<SyntheticEvent> target = recordOfPlace(taker, event.position()))
        m_patterns.takeDrop(*target);
    m_pointer.reset();
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
    m_ledger.settle();
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
    if (!QtWrapper::qtEventToSyntheticEvent(receiverOf(receiver, *event), event, &record))
        return;
    if (!m_keyReleases.correct(*event, &record)) {
        if (!m_texts.isHolding())
            m_patterns.takeModifierRelease(record);
        return;
    }
    m_modifiers.noteRecord(record);
    m_ledger.take(record);
}

} // namespace Vantle::Agent
