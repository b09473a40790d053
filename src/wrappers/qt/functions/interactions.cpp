#include "wrappers/qt/functions/interactions_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/bynamefunctions.h"

namespace Vantle::QtWrapper {

namespace {

/// Reads the arguments of one call in their order.
class ArgumentReader
{
public:
    explicit ArgumentReader(const ObjectList &arguments) : m_arguments(arguments) {}

    int integer()
    {
        const void *const value = native();
        return value ? *static_cast<const int *>(value) : 0;
    }

    QPoint point()
    {
        const int x = integer();
        return {x, integer()};
    }

    QString text()
    {
        const void *const value = native();
        return value ? *static_cast<const QString *>(value) : QString();
    }

    /// The object that stands there, or whose name does. Null, and the script
    /// has been told, if a name denotes nothing.
    SharedPtr<Object> object()
    {
        const SharedPtr<Object> argument = m_arguments.at(m_next);
        if (!argument || !argument->isA(Inspector::self()->classByName(QStringLiteral("QString")))) {
            ++m_next;
            return argument;
        }
        QString problem = QStringLiteral("there is no application to look for it");
        const QString name = text();
        Application *const application = Application::self();
        SharedPtr<Object> found = application ? application->objectForName(name, &problem) : nullptr;
        if (!found)
            Inspector::self()->raiseError(QStringLiteral("Cannot find %1: %2").arg(name, problem));
        return found;
    }

private:
    const void *native()
    {
        const SharedPtr<Object> argument = m_arguments.at(m_next++);
        void *value = nullptr;
        return argument && argument->get(&value) ? value : nullptr;
    }

    const ObjectList &m_arguments;
    std::size_t m_next = 0;
};

/// Two numbers alone are read as modifiers and button, and are most likely meant
/// as something else.
QString coordinatesHint(const Interaction &call)
{
    return call.coordinates ? QString() : QStringLiteral("; coordinates need a button");
}

std::optional<Qt::MouseButton> buttonOf(int value, const QString &hint)
{
    switch (value) {
    case Qt::LeftButton:
    case Qt::RightButton:
    case Qt::MiddleButton: return static_cast<Qt::MouseButton>(value);
    default:
        Inspector::self()->raiseError(
            QStringLiteral("No mouse button has the value %1: expected 1 (left), 2 (right) or 4 (middle)%2")
                .arg(value)
                .arg(hint));
        return std::nullopt;
    }
}

std::optional<Qt::KeyboardModifiers> modifiersOf(int value, const QString &hint)
{
    constexpr Qt::KeyboardModifiers known = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier
        | Qt::MetaModifier;
    const auto modifiers = Qt::KeyboardModifiers::fromInt(static_cast<Qt::KeyboardModifiers::Int>(value));
    if (!(modifiers & ~known))
        return modifiers;
    Inspector::self()->raiseError(
        QStringLiteral("%1 is no set of keyboard modifiers: expected a sum of Qt::ShiftModifier, "
                       "Qt::ControlModifier, Qt::AltModifier and Qt::MetaModifier%2")
            .arg(value)
            .arg(hint));
    return std::nullopt;
}

std::optional<int> holdOf(int value)
{
    if (value >= 0)
        return value;
    Inspector::self()->raiseError(QStringLiteral("No button can be held for %1 ms").arg(value));
    return std::nullopt;
}

/// Reads one thing into \p call. False if the script has been told what is wrong with it.
bool read(ArgumentReader *arguments, Takes what, Interaction *call)
{
    switch (what) {
    case Takes::Coordinates: call->coordinates = arguments->point(); return true;
    case Takes::Distance: call->distance = arguments->point(); return true;
    case Takes::WheelDeltas: call->wheelDeltas = arguments->point(); return true;
    case Takes::Size: {
        const QPoint size = arguments->point();
        call->size = QSize(size.x(), size.y());
        return true;
    }
    case Takes::State: call->state = arguments->integer(); return true;
    case Takes::Modifiers: {
        const std::optional<Qt::KeyboardModifiers> modifiers = modifiersOf(arguments->integer(),
                                                                           coordinatesHint(*call));
        call->modifiers = modifiers.value_or(Qt::NoModifier);
        return modifiers.has_value();
    }
    case Takes::Button: {
        const std::optional<Qt::MouseButton> button = buttonOf(arguments->integer(), coordinatesHint(*call));
        call->button = button.value_or(Qt::NoButton);
        return button.has_value();
    }
    case Takes::Delay: call->delay = arguments->integer(); return true;
    case Takes::Hold: {
        const std::optional<int> hold = holdOf(arguments->integer());
        call->hold = hold;
        return hold.has_value();
    }
    case Takes::Text:
    case Takes::Key:
    case Takes::Gesture: call->text = arguments->text(); return true;
    case Takes::Index: call->goal.index = arguments->integer(); return true;
    case Takes::Cell:
        call->goal.row = arguments->integer();
        call->goal.column = arguments->integer();
        return true;
    case Takes::EntryText: call->goal.text = arguments->text(); return true;
    case Takes::ContentPosition: call->goal.content = arguments->point(); return true;
    case Takes::Target: call->target = arguments->object(); return !call->target.isNull();
    case Takes::TargetCoordinates: call->targetCoordinates = arguments->point(); return true;
    }
    return false;
}

} // namespace

std::optional<Interaction> readInteraction(const ObjectList &arguments, std::initializer_list<Takes> takes)
{
    ArgumentReader reader(arguments);
    Interaction call;
    call.object = reader.object();
    if (!call.object) {
        Inspector::self()->raiseError(QStringLiteral("No object was given"));
        return std::nullopt;
    }
    for (const Takes what : takes) {
        if (!read(&reader, what, &call))
            return std::nullopt;
    }
    return call;
}

SharedPtr<Object> flick(const Interaction &call)
{
    Inspector *const inspector = Inspector::self();
    const ObjectList arguments{call.object, inspector->createInteger(call.distance.x()),
                               inspector->createInteger(call.distance.y())};
    const GlobalMethod *const method = inspector->findGlobalMethod(QStringLiteral("flick"), arguments);
    if (method && method->function() && method != flickODByNameFn())
        return method->function()(arguments, nullptr);
    inspector->raiseError(
        QStringLiteral("Cannot flick: nobody can flick an object of type %1").arg(call.object->className()));
    return nullptr;
}

} // namespace Vantle::QtWrapper
