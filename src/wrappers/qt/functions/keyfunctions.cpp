#include "wrappers/qt/functions/interactions_p.h"

#include "hook/delegates.h"
#include "hook/inspector.h"
#include "wrappers/qt/functions/inputaction_p.h"
#include "wrappers/qt/functions/inputdevices_p.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/functions/inputtarget_p.h"
#include "wrappers/qt/functions/typedtext_p.h"
#include "wrappers/qt/readiness.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>
#include <QtGui/QInputMethodEvent>

namespace Vantle::QtWrapper {

namespace {

constexpr Qt::KeyboardModifiers HeldByKeys = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier
    | Qt::MetaModifier;
constexpr int KeyWait = 1;

/// Writes the steps that type a text.
class Typist
{
public:
    explicit Typist(InputPlan *plan) : m_plan(plan) {}

    void focus(const SharedPtr<Object> &object)
    {
        m_plan->steps.push_back(
            {0, 0, false, [object](InputDevices &) {
                 const InteractionDelegate *const delegate = DelegateFactory::self()->interactionDelegate(
                     object->objectClass());
                 if (delegate)
                     delegate->takeFocus(object);
             }});
    }

    void type(const Keystroke &keystroke)
    {
        hold(keystroke.modifiers & HeldByKeys);
        add(false, [keystroke, window = m_plan->window](InputDevices &devices) {
            devices.pressKey(window, keystroke.key, keystroke.modifiers, keystroke.text);
        });
        add(true, [keystroke, window = m_plan->window](InputDevices &devices) {
            devices.releaseKey(window, keystroke.key, keystroke.modifiers, keystroke.text);
        });
    }

    /// Leaves exactly \p modifiers held.
    void hold(Qt::KeyboardModifiers modifiers)
    {
        if (modifiers == m_held)
            return;
        add(!(modifiers & ~m_held),
            [up = m_held & ~modifiers, down = modifiers & ~m_held, window = m_plan->window](InputDevices &devices) {
                devices.releaseModifiers(window, up);
                devices.pressModifiers(window, down);
            });
        m_held = modifiers;
    }

private:
    void add(bool letsGo, std::function<void(InputDevices &)> deliver)
    {
        m_plan->steps.push_back({KeyWait, 0, letsGo, std::move(deliver)});
    }

    InputPlan *m_plan;
    Qt::KeyboardModifiers m_held;
};

/// Leaves the keys of \p key held, those of its modifiers first.
void holdKey(InputDevices &devices, const QPointer<QWindow> &window, const Keystroke &key)
{
    devices.holdModifiers(window, key.modifiers & HeldByKeys);
    if (key.key != 0)
        devices.pressKey(window, key.key, key.modifiers, key.text);
}

void dropKey(InputDevices &devices, const QPointer<QWindow> &window, const Keystroke &key)
{
    if (key.key != 0)
        devices.releaseKey(window, key.key, key.modifiers, key.text);
    devices.dropModifiers(window, key.modifiers & HeldByKeys);
}

bool isHeld(const Keystroke &key, const HeldInput &held)
{
    return key.key != 0 ? held.keys.contains(key.key) : (held.modifiers & key.modifiers) == key.modifiers;
}

QString planTyping(const SharedPtr<Object> &object, const TypedText &typed, InputPlan *plan)
{
    QString problem;
    plan->window = windowShowing(object);
    if (!plan->window)
        return QStringLiteral("it is in no window");
    const auto point = pointOfAction(object, std::nullopt, &problem);
    plan->point = point ? point->local() : QPointF();

    Typist typist(plan);
    typist.focus(object);
    for (const Keystroke &keystroke : typed.keystrokes)
        typist.type(keystroke);
    typist.hold({});
    return {};
}

/// Types what a script gave as \p typed, if it is something to be typed.
SharedPtr<Object> playTyping(const QString &function, const Interaction &call, const std::optional<TypedText> &typed,
                             const QString &problem)
{
    if (!typed) {
        Inspector::self()->raiseError(QStringLiteral("Cannot %1: %2").arg(function, problem));
        return nullptr;
    }
    if (!ensureValidVisibleAndReady(call.object, -1, -1, function, nullptr))
        return nullptr;
    InputPlayer::self()->play({function, call.object, true, [object = call.object, typed](InputPlan *plan) {
                                   return planTyping(object, *typed, plan);
                               }});
    return Inspector::self()->voidResult();
}

std::optional<Keystroke> keyOf(const QString &function, const Interaction &call)
{
    QString problem;
    const std::optional<Keystroke> key = parseKey(call.text, &problem);
    if (!key)
        Inspector::self()->raiseError(QStringLiteral("Cannot %1: %2").arg(function, problem));
    return key;
}

QString planPress(const Interaction &call, const Keystroke &key, InputPlan *plan)
{
    if (isHeld(key, plan->before))
        return QStringLiteral("the key %1 is held already").arg(call.text);
    plan->window = windowShowing(call.object);
    if (!plan->window)
        return QStringLiteral("it is in no window");
    Typist(plan).focus(call.object);
    plan->steps.push_back(
        {KeyWait, 0, false, [key, window = plan->window](InputDevices &devices) { holdKey(devices, window, key); }});
    return {};
}

/// The key goes up where the focus is by now, which may be in another window.
QString planRelease(const Interaction &call, const Keystroke &key, InputPlan *plan)
{
    if (!isHeld(key, plan->before))
        return QStringLiteral("the key %1 is not held; keyPress has to come first").arg(call.text);
    QWindow *const focusWindow = QGuiApplication::focusWindow();
    plan->window = focusWindow ? focusWindow : windowShowing(call.object);
    plan->steps.push_back(
        {KeyWait, 0, true, [key, window = plan->window](InputDevices &devices) { dropKey(devices, window, key); }});
    return {};
}

} // namespace

SharedPtr<Object> type(const Interaction &call)
{
    QString problem;
    return playTyping(QStringLiteral("type"), call, parseTypedText(call.text, &problem), problem);
}

SharedPtr<Object> typeText(const Interaction &call)
{
    QString problem;
    return playTyping(QStringLiteral("typeText"), call, literalText(call.text, &problem), problem);
}

SharedPtr<Object> keyPress(const Interaction &call)
{
    const QString function = QStringLiteral("keyPress");
    const std::optional<Keystroke> key = keyOf(function, call);
    if (!key || !ensureValidVisibleAndReady(call.object, -1, -1, function, nullptr))
        return nullptr;
    InputPlayer::self()->play(
        {function, call.object, true, [call, key](InputPlan *plan) { return planPress(call, *key, plan); }});
    return Inspector::self()->voidResult();
}

SharedPtr<Object> keyRelease(const Interaction &call)
{
    const QString function = QStringLiteral("keyRelease");
    const std::optional<Keystroke> key = keyOf(function, call);
    if (!key)
        return nullptr;
    InputPlayer::self()->play(
        {function, call.object, false, [call, key](InputPlan *plan) { return planRelease(call, *key, plan); }});
    return Inspector::self()->voidResult();
}

} // namespace Vantle::QtWrapper
