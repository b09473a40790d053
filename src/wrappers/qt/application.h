#pragma once

#include "hook/eventdata.h"
#include "wrappers/qt/lookupcandidates.h"
#include "wrappers/qt/namegenerator.h"
#include "wrappers/qt/namesfile.h"
#include "wrappers/qt/objectlookup.h"
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

    /// The object that \p name, as text, denotes; a null pointer if it denotes
    /// nothing. Then \p problem, unless null, says why, in words. Looking for an
    /// item runs code of the program.
    SharedPtr<Object> objectForName(const QString &name, QString *problem = nullptr) const;
    /// The objects that come closest to \p name, at most \p limit, for telling
    /// why it denotes nothing: among what is below its container or, where that
    /// isn't found either, those that come closest to the container. None for a
    /// text that is no name.
    QList<LookupCandidate> closestObjects(const QString &name, qsizetype limit) const;
    /// Which step of \p name, as text, says no occurrence and fits several objects
    /// now, how many, and the first \p limit of them.
    Ambiguity ambiguity(const QString &name, qsizetype limit) const { return m_lookup.ambiguity(name, limit); }
    /// Makes \p finder look for what is below objects of \p containerClass and
    /// the classes below it, in place of any earlier one.
    void registerFinder(const Class *containerClass, ObjectFinder finder);

    /// Makes what \p lister lists be found by names without container, behind
    /// the windows.
    void registerTopLevelObjects(ObjectLister lister);
    /// What names without container are looked for among, in the order in which
    /// occurrences count.
    ObjectList topLevelObjects() const { return m_lookup.topLevelObjects(); }

    /// Puts \p names in the place of the aliases known so far.
    void setNames(const NamesFile &names);
    /// The name that is to stand in scripts in place of \p name: the alias that
    /// the names file has for it. Empty if there is none.
    QString mappedNameFor(const SharedPtr<Object> &object, const QString &name) const;

private:
    Q_DISABLE_COPY_MOVE(Application)

    WrapperConfig m_config;
    NameGenerator m_nameGenerator;
    NamesFile m_names;
    ObjectLookup m_lookup;
    StatementHandler m_statementHandler;
};

} // namespace Vantle::QtWrapper
