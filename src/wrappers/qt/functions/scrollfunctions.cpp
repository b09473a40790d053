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

SharedPtr<Object> scrollTo(const Interaction &call)
{
    QString problem = QStringLiteral("nobody can scroll it");
    if (call.object->isNull())
        problem = QStringLiteral("the object of type %1 does not exist any more").arg(call.object->className());
    else if (theScroller)
        problem = theScroller(call.object, call.goal);
    if (problem.isEmpty())
        return Inspector::self()->voidResult();
    Inspector::self()->raiseError(QStringLiteral("Cannot scrollTo: %1").arg(problem));
    return nullptr;
}

} // namespace Vantle::QtWrapper
