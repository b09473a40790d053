#include "wrappers/qt/extensions/qtquick/hostmodule.h"

#include "wrappers/qt/extensions/qtquick/inputhelper_p.h"

#include <QtQml/qqml.h>

namespace Vantle::QtWrapper {

namespace {

constexpr char Module[] = "com.corvaline.vantle.host";

/// The engine owns what this makes.
template<typename Helper>
QObject *makeHelper(QQmlEngine *, QJSEngine *)
{
    return new Helper;
}

} // namespace

void registerHostModule()
{
    [[maybe_unused]] static const int input = qmlRegisterSingletonType<InputHelper>(Module, 0, 1, "Input",
                                                                                    makeHelper<InputHelper>);
}

} // namespace Vantle::QtWrapper
