#include "wrappers/qt/functions/inputplayer.h"

#include "wrappers/qt/functions/inputaction_p.h"
#include "wrappers/qt/functions/inputdevices_p.h"
#include "wrappers/qt/functions/inputtarget_p.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/qpa/qwindowsysteminterface.h>

#include <chrono>
#include <deque>
#include <utility>

namespace Vantle::QtWrapper {

namespace {

using namespace std::chrono_literals;

/// How long a window manager gets to make a window the active one.
constexpr auto ActivationLimit = 500ms;
constexpr auto ActivationCheck = 5ms;

/// What setBeforeAction() was given last.
std::function<void()> beforeAction;

QPointer<InputPlayer> thePlayer;

/// An action and who wants to know about its end.
struct Entry
{
    InputAction action;
    std::vector<InputPlayer::Callback> callbacks;
};

/// Whether a user's click would make \p window the active one.
bool canBecomeActive(const QWindow *window)
{
    switch (window->type()) {
    case Qt::Window:
    case Qt::Dialog:
    case Qt::Sheet:
    case Qt::Tool: return !window->flags().testFlag(Qt::WindowDoesNotAcceptFocus);
    default: return false;
    }
}

} // namespace

class InputPlayer::Private
{
public:
    Private();

    void turn();
    void letGo() { m_devices.letGo(); }
    void schedule(std::chrono::milliseconds wait = 0ms) { m_timer.start(wait); }

    std::deque<Entry> queue;
    Entry current;
    InputPlan plan;
    QString error; ///< of the current action, or of the last until somebody asked
    std::vector<Callback> idleCallbacks;

    enum Phase {
        Idle,
        Activating,
        Playing,
        Ending
    };
    Phase phase = Idle;

private:
    void beginNext();
    void activate();
    void prepare();
    void playStep();
    void end();
    void fail(const QString &reason);
    bool isBroken() const;
    bool hasOnlyToLetGo() const;
    QString describe(const QString &reason) const;

    QTimer m_timer;
    InputDevices m_devices;
    QDeadlineTimer m_activationDeadline;
    QPointer<QWindow> m_toActivate;
    std::size_t m_next = 0; ///< the step to be played next
};

InputPlayer::Private::Private()
{
    // Single shots, as a timer that repeats is not run again from a loop that
    // its own slot has opened.
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { turn(); });
}

// Every path sets the state and the timer first and runs the program's code
// last, so that it may come back here from an event loop below that code.
void InputPlayer::Private::turn()
{
    switch (phase) {
    case Idle: beginNext(); return;
    case Activating: activate(); return;
    case Playing: playStep(); return;
    case Ending: end(); return;
    }
}

void InputPlayer::Private::beginNext()
{
    if (queue.empty()) {
        for (const Callback &callback : std::exchange(idleCallbacks, {}))
            callback(std::exchange(error, QString()));
        return;
    }
    current = std::move(queue.front());
    queue.pop_front();
    plan = {};
    error.clear();
    m_next = 0;
    phase = Activating;
    m_toActivate = nullptr;
    if (QWindow *const window = current.action.activates ? windowShowing(current.action.target) : nullptr;
        window && canBecomeActive(window) && QGuiApplication::focusWindow() != window)
        m_toActivate = window;
    m_activationDeadline = QDeadlineTimer(ActivationLimit);
    schedule();
    announceAction();
    if (m_toActivate)
        m_toActivate->requestActivate();
}

void InputPlayer::Private::activate()
{
    const bool waits = m_toActivate && QGuiApplication::focusWindow() != m_toActivate;
    if (waits && !m_activationDeadline.hasExpired()) {
        schedule(ActivationCheck);
        return;
    }
    phase = Playing;
    schedule();
    // Where another program keeps the focus, Qt at least must believe that it is ours.
    if (waits)
        QWindowSystemInterface::handleWindowActivated<QWindowSystemInterface::SynchronousDelivery>(m_toActivate);
}

void InputPlayer::Private::prepare()
{
    plan.before = m_devices.held();
    const QString reason = current.action.prepare(&plan);
    if (!reason.isEmpty()) {
        fail(reason);
    } else if (plan.steps.empty()) {
        phase = Ending;
        schedule();
    } else {
        m_devices.separateFromEarlierPresses();
        schedule(std::chrono::milliseconds(plan.steps.front().wait));
    }
}

void InputPlayer::Private::playStep()
{
    if (plan.steps.empty()) {
        prepare();
        return;
    }
    if (isBroken()) {
        fail(QStringLiteral("the object or its window was destroyed in the middle of it"));
        return;
    }
    const InputStep step = plan.steps.at(m_next++);
    if (m_next == plan.steps.size())
        phase = Ending;
    const int wait = phase == Ending ? 0 : plan.steps.at(m_next).wait;
    schedule(std::chrono::milliseconds(wait));
    m_devices.advanceTime(step.wait + step.rest);
    step.deliver(m_devices);
}

bool InputPlayer::Private::isBroken() const
{
    if (current.action.target && !current.action.target->isNull() && plan.window)
        return false;
    return !hasOnlyToLetGo();
}

bool InputPlayer::Private::hasOnlyToLetGo() const
{
    return m_next > 0
        && std::all_of(plan.steps.begin() + static_cast<std::ptrdiff_t>(m_next), plan.steps.end(),
                       [](const InputStep &step) { return step.letsGo; });
}

void InputPlayer::Private::fail(const QString &reason)
{
    error = describe(reason);
    phase = Ending;
    schedule();
    m_devices.letGo();
}

QString InputPlayer::Private::describe(const QString &reason) const
{
    return QStringLiteral("%1 failed: %2").arg(current.action.function, reason);
}

void InputPlayer::Private::end()
{
    phase = Idle;
    const std::vector<Callback> callbacks = std::exchange(current.callbacks, {});
    current = {};
    // Also for those who came to know that all is idle in the meantime.
    if (!queue.empty() || !idleCallbacks.empty())
        schedule();
    const QString result = callbacks.empty() ? QString() : std::exchange(error, QString());
    for (const Callback &callback : callbacks)
        callback(result);
}

InputPlayer *InputPlayer::self()
{
    Q_ASSERT_X(qApp, "InputPlayer::self", "there must be an application object");
    if (!thePlayer)
        thePlayer = new InputPlayer(qApp);
    return thePlayer;
}

InputPlayer::InputPlayer(QObject *parent) : QObject(parent), m_private(std::make_unique<Private>())
{
}

InputPlayer::~InputPlayer() = default;

bool InputPlayer::isIdle() const
{
    return m_private->phase == Private::Idle && m_private->queue.empty();
}

bool InputPlayer::isPlayed() const
{
    return (m_private->phase == Private::Idle || m_private->phase == Private::Ending) && m_private->queue.empty();
}

void InputPlayer::whenIdle(Callback callback)
{
    if (!m_private->queue.empty()) {
        m_private->queue.back().callbacks.push_back(std::move(callback));
    } else if (m_private->phase != Private::Idle) {
        m_private->current.callbacks.push_back(std::move(callback));
    } else {
        m_private->idleCallbacks.push_back(std::move(callback));
        m_private->schedule();
    }
}

void InputPlayer::letGo()
{
    if (thePlayer)
        thePlayer->m_private->letGo();
}

QWindow *InputPlayer::lastWindow() const
{
    return m_private->plan.window;
}

QPointF InputPlayer::lastPoint() const
{
    return m_private->plan.point;
}

void InputPlayer::setBeforeAction(std::function<void()> callback)
{
    beforeAction = std::move(callback);
}

void InputPlayer::announceAction()
{
    if (const std::function<void()> callback = beforeAction)
        callback();
}

void InputPlayer::play(InputAction action)
{
    m_private->queue.push_back({std::move(action), {}});
    if (m_private->phase == Private::Idle)
        m_private->schedule();
}

} // namespace Vantle::QtWrapper
