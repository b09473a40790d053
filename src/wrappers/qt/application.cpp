#include "wrappers/qt/application.h"

#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/enumclasses_p.h"
#include "wrappers/qt/overloads.h"
#include "wrappers/qt/windowdelegates_p.h"
#include "wrappers/qt/windownames.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QWindow>

namespace Vantle::QtWrapper {

namespace {

Application *instance = nullptr;

} // namespace

StatementSink::~StatementSink() = default;

Application::Application(const WrapperConfig &config) : m_config(config), m_lookup(&m_nameGenerator, &m_names)
{
    Q_ASSERT_X(!instance, "Vantle::QtWrapper::Application", "there can be only one");
    instance = this;
    // Known from the start on, so that names and delegates can be registered
    // for windows before the first one shows up.
    m_nameGenerator.registerSource(classForMetaObject(&QWindow::staticMetaObject),
                                   std::make_unique<WindowNameSource>());
    registerWindowDelegates();
    pixmapClass();
    registerEnumClasses();
    registerByNameFunctions();
    registerWindowOverloads();
}

Application::~Application()
{
    instance = nullptr;
}

Application *Application::self()
{
    return instance;
}

void Application::recordEvent(EventData statement)
{
    // A copy: the handler may be replaced while it runs.
    if (const StatementHandler handler = m_statementHandler)
        handler(statement);
}

void Application::setStatementHandler(StatementHandler handler)
{
    m_statementHandler = std::move(handler);
}

SharedPtr<Object> Application::objectForName(const QString &name, QString *problem) const
{
    QString unwanted;
    return m_lookup.find(name, problem ? problem : &unwanted);
}

QList<LookupCandidate> Application::closestObjects(const QString &name, qsizetype limit) const
{
    return m_lookup.closest(name, limit);
}

void Application::registerFinder(const Class *containerClass, ObjectFinder finder)
{
    m_lookup.registerFinder(containerClass, std::move(finder));
}

void Application::registerTopLevelObjects(ObjectLister lister)
{
    m_lookup.registerTopLevelObjects(std::move(lister));
}

void Application::setNames(const NamesFile &names)
{
    m_names = names;
}

QString Application::mappedNameFor(const SharedPtr<Object> &, const QString &name) const
{
    return m_names.aliasFor(name);
}

} // namespace Vantle::QtWrapper
