#include "wrappers/qt/extensions/qtquickcommon/functions/windowstateclass.h"

#include "hook/method.h"

#include <algorithm>
#include <vector>

namespace Vantle::QtWrapper {

namespace {

constexpr qint32 ListEnd = -1;
constexpr qint32 WindowStates[] = {0, 1, 2, 3, 4, ListEnd};

const char *nameOfWindowState(qint32 state)
{
    constexpr const char *names[] = {"None", "Normal", "Maximize", "Minimize", "Fullscreen"};
    return names[state];
}

} // namespace

WindowStateClass::WindowStateClass() : Class(QStringLiteral("WindowState"), true)
{
    setMemberCount(ConstructorOffset, 0);
    setMemberCount(MethodOffset, 0);
    setMemberCount(PropertyOffset, 0);
    setMemberCount(EnumOffset, 1);
}

WindowStateClass::~WindowStateClass() = default;

const Enum *WindowStateClass::createEnum(int index) const
{
    if (index != superClassOffset(EnumOffset))
        return nullptr;
    std::vector<Enum::Item> states;
    for (const qint32 *state = WindowStates; *state != ListEnd; ++state)
        states.push_back({nameOfWindowState(*state), *state});
    states.push_back({nullptr, 0});
    // Never freed: the enumeration, which lives as long as the process, points into them.
    auto *const items = new Enum::Item[states.size()];
    std::copy(states.cbegin(), states.cend(), items);
    return new Enum(this, QStringLiteral("WindowStateValue"), items, superClassOffset(EnumOffset));
}

} // namespace Vantle::QtWrapper
