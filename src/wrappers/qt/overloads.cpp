#include "wrappers/qt/overloads.h"

#include "hook/inspector.h"
#include "wrappers/qt/bynamefunctions_p.h"
#include "wrappers/qt/functions/interactions_p.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QWindow>

namespace Vantle::QtWrapper {

namespace {

void addOverload(GlobalFunction call, const QString &name, const QList<Argument> &arguments)
{
    Inspector *const inspector = Inspector::self();
    const Argument result(inspector->voidResult()->objectClass(), Argument::ByValue, 0);
    inspector->globalClass()->addMethod(new GlobalMethod(call, result, name, Signature(arguments)));
}

Argument objectArgument(const QString &name, const Class *type)
{
    return {name, type, Argument::ByPointer, 0};
}

Argument integerArgument(const QString &name)
{
    return {name, Inspector::self()->classByName(QStringLiteral("int")), Argument::ByValue, 0};
}

/// As \p byName, one of the functions by name, with an object of \p type in place of the object's name.
void addObjectOverload(const Method *byName, const Class *type)
{
    QList<Argument> arguments = byName->signature().arguments();
    arguments.replace(0, objectArgument(QStringLiteral("object"), type));
    addOverload(static_cast<const GlobalMethod *>(byName)->function(), byName->name(), arguments);
}

} // namespace

void registerInteractionOverloadsFor(const Class *type)
{
    if (!type)
        return;
    for (const auto byName : inputByNameFns)
        addObjectOverload(byName(), type);
}

void registerWindowOverloads()
{
    const Class *const windowClass = classForMetaObject(&QWindow::staticMetaObject);
    [[maybe_unused]] static const bool isDone = [windowClass] {
        registerInteractionOverloadsFor(windowClass);
        for (const auto byName : windowByNameFns)
            addObjectOverload(byName(), windowClass);
        return true;
    }();
}

void registerDragAndDropOverloadsWithTarget(const Class *source, const Class *target)
{
    if (!source || !target)
        return;
    const QString name = QStringLiteral("dragAndDrop");
    const Argument from = objectArgument(QStringLiteral("object"), source);
    const Argument to = objectArgument(QStringLiteral("target"), target);
    addOverload(callInteraction<dragAndDrop, Takes::Target>, name, {from, to});
    addOverload(callInteraction<dragAndDrop, Takes::Coordinates, Takes::Target, Takes::TargetCoordinates>, name,
                {from, integerArgument(QStringLiteral("x")), integerArgument(QStringLiteral("y")), to,
                 integerArgument(QStringLiteral("targetX")), integerArgument(QStringLiteral("targetY"))});
}

void registerFlickODOverload(GlobalFunction call, const Argument &object)
{
    addOverload(call, QStringLiteral("flick"),
                {object, integerArgument(QStringLiteral("dx")), integerArgument(QStringLiteral("dy"))});
}

} // namespace Vantle::QtWrapper
