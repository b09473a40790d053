#include "wrappers/qt/enumclasses_p.h"

#include "hook/enumclass.h"
#include "hook/inspector.h"

#include <QtCore/qnamespace.h>

namespace Vantle::QtWrapper {

namespace {

constexpr Enum::Item WindowStates[] = {
    {"None", 0}, {"Normal", 1}, {"Maximize", 2}, {"Minimize", 3}, {"Fullscreen", 4}, {nullptr, 0},
};

constexpr Enum::Item MouseButtons[] = {
    {"NoButton", Qt::NoButton},
    {"LeftButton", Qt::LeftButton},
    {"RightButton", Qt::RightButton},
    {"MiddleButton", Qt::MiddleButton},
    {nullptr, 0},
};

constexpr Enum::Item KeyboardModifiers[] = {
    {"NoModifier", Qt::NoModifier},   {"ShiftModifier", Qt::ShiftModifier}, {"ControlModifier", Qt::ControlModifier},
    {"AltModifier", Qt::AltModifier}, {"MetaModifier", Qt::MetaModifier},   {nullptr, 0},
};

void registerEnumClass(const QString &className, const QString &enumName, const Enum::Item *items)
{
    if (!Inspector::self()->classByName(className))
        Inspector::self()->registerClass(new EnumClass(className, enumName, items));
}

} // namespace

void registerEnumClasses()
{
    registerEnumClass(QStringLiteral("WindowState"), QStringLiteral("WindowStateValue"), WindowStates);
    registerEnumClass(QStringLiteral("Qt::MouseButton"), QStringLiteral("MouseButton"), MouseButtons);
    registerEnumClass(QStringLiteral("Qt::KeyboardModifiers"), QStringLiteral("KeyboardModifier"), KeyboardModifiers);
}

} // namespace Vantle::QtWrapper
