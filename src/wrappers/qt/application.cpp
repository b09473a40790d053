#include "wrappers/qt/application.h"

#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/windowdelegates_p.h"
#include "wrappers/qt/windownames.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QWindow>

namespace Vantle::QtWrapper {

namespace {

Application *instance = nullptr;

} // namespace

StatementSink::~StatementSink() = default;

Application::Application(const WrapperConfig &config)
    : m_config(config)
{
    Q_ASSERT_X(!instance, "Vantle::QtWrapper::Application", "there can be only one");
    instance = this;
    // Known from the start on, so that names and delegates can be registered
    // for windows before the first one shows up.
    m_nameGenerator.registerSource(classForMetaObject(&QWindow::staticMetaObject),
                                   std::make_unique<WindowNameSource>());
    registerWindowDelegates();
    registerByNameFunctions();
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

QString Application::mappedNameFor(const SharedPtr<Object> &, const QString &) const
{
    // Without a names file no name is replaced.
    return {};
}

} // namespace Vantle::QtWrapper
