#include "wrappers/qt/scrolling.h"

#include "hook/inspector.h"
#include "wrappers/qt/functions/inputplayer.h"
#include "wrappers/qt/functions/interactions_p.h"

namespace Vantle::QtWrapper {

namespace {

Scroller theScroller;

} // namespace

void registerScroller(Scroller scroller)
{
    theScroller = std::move(scroller);
}

QString scroll(const SharedPtr<Object> &object, const ScrollGoal &goal)
{
    if (object->isNull())
        return QStringLiteral("the object of type %1 does not exist any more").arg(object->className());
    return theScroller ? theScroller(object, goal) : QStringLiteral("nobody can scroll it");
}

SharedPtr<Object> scrollTo(const Interaction &call)
{
    const QString problem = scroll(call.object, call.goal);
    if (problem.isEmpty())
        return Inspector::self()->voidResult();
    Inspector::self()->raiseError(QStringLiteral("Cannot scrollTo: %1").arg(problem));
    return nullptr;
}

} // namespace Vantle::QtWrapper
