#include "wrappers/qt/extensions/qtquickcommon/functions/quickfunctions.h"

#include "hook/inspector.h"
#include "wrappers/qt/extensions/qtquickcommon/functions/flickplayback.h"
#include "wrappers/qt/extensions/qtquickcommon/functions/screenshots.h"
#include "wrappers/qt/overloads.h"

namespace Vantle::QtWrapper {

void setupQuickFunctions()
{
    Inspector *const inspector = Inspector::self();
    const Class *const itemClass = inspector->classByName(QStringLiteral("QQuickItem"));
    const Class *const quickWindowClass = inspector->classByName(QStringLiteral("QQuickWindow"));
    registerInteractionOverloadsFor(itemClass);
    registerDragAndDropOverloadsWithTarget(itemClass, itemClass);
    const Class *const windowClass = inspector->classByName(QStringLiteral("QWindow"));
    registerDragAndDropOverloadsWithTarget(windowClass, itemClass);

    const Argument object(QStringLiteral("object"), itemClass, Argument::ByPointer, 0);
    const Argument window(QStringLiteral("window"), quickWindowClass, Argument::ByPointer, 0);
    const Argument pixmap(inspector->classByName(QStringLiteral("QPixmap")), Argument::ByValue, 0);
    registerFlickODOverload(flickFunction, object);

    const QString grab = QStringLiteral("grabWidget");
    GlobalClass *const functions = inspector->globalClass();
    functions->addMethod(new GlobalMethod(grabItemFunction, pixmap, grab, Signature(object)));
    functions->addMethod(new GlobalMethod(grabWindowFunction, pixmap, grab, Signature(window)));
}

} // namespace Vantle::QtWrapper
