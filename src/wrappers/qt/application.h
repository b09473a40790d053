#pragma once

#include "hook/eventdata.h"
#include "wrappers/qt/namegenerator.h"
#include "wrappers/qt/wrapperconfig.h"
#include "wrappers/qt/wrapperglobal.h"

#include <functional>

namespace Vantle::QtWrapper {

/// The way out for recorded statements.
class VANTLEQTWRAPPER_EXPORT StatementSink
{
public:
    virtual ~StatementSink();
    virtual void recordEvent(EventData statement) = 0;
};

/// The wrapper library's centre: configuration, names, and the way out for
/// statements.
///
/// The host makes exactly one, before anything else of the libraries above is
/// used, and destroys it last. Belongs to the thread that owns the user interface.
class VANTLEQTWRAPPER_EXPORT Application : public StatementSink
{
public:
    using StatementHandler = std::function<void(const EventData &)>;

    explicit Application(const WrapperConfig &config = {});
    ~Application() override;

    /// The one object, null when there is none.
    static Application *self();

    /// Never null, valid as long as the application.
    const WrapperConfig *wrapperConfig() const { return &m_config; }
    NameGenerator *nameGenerator() { return &m_nameGenerator; }

    /// Hands \p statement to the handler; without one it is dropped.
    void recordEvent(EventData statement) override;
    /// An empty handler drops statements.
    void setStatementHandler(StatementHandler handler);

    /// The name that is to stand in scripts in place of \p name, empty if
    /// there is none.
    QString mappedNameFor(const SharedPtr<Object> &object, const QString &name) const;

private:
    Q_DISABLE_COPY_MOVE(Application)

    WrapperConfig m_config;
    NameGenerator m_nameGenerator;
    StatementHandler m_statementHandler;
};

} // namespace Vantle::QtWrapper
