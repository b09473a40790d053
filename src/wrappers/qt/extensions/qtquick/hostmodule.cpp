#include "wrappers/qt/extensions/qtquick/hostmodule.h"

#include "wrappers/qt/extensions/qtquick/inputhelper_p.h"
#include "wrappers/qt/extensions/qtquick/itemnames_p.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"

#include <QtQml/QtQml>

namespace Vantle::QtWrapper {

namespace {

bool isEnabled = true;

constexpr char ModuleUri[] = "com.corvaline.vantle.host";

template<typename Singleton>
void registerSingleton(const char *name)
{
    qmlRegisterSingletonType<Singleton>(ModuleUri, 0, 1, name,
                                        [](QQmlEngine *, QJSEngine *) -> QObject * { return new Singleton; });
}

} // namespace

void registerHostModule()
{
    registerSingleton<InputHelper>("Input");
    registerSingleton<ItemNames>("ItemNames");
}

void setStandardExtensionEnabled(bool isWanted)
{
    isEnabled = isWanted;
}

bool isStandardExtensionEnabled()
{
    return isEnabled;
}

} // namespace Vantle::QtWrapper
