#include "agent/agent.h"
#include "agent/environment.h"

#include <QtGui/QGenericPlugin>

namespace Vantle::Agent {

/// What Qt asks for the agent: QT_QPA_GENERIC_PLUGINS=vantle. Qt creates it
/// while the application object is still being made.
class AgentPlugin final : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "agentplugin.json")

public:
    QObject *create(const QString &key, const QString &) override
    {
        if (key.compare(pluginKey(), Qt::CaseInsensitive) != 0)
            return nullptr;
        const std::optional<Invitation> invitation = takeInvitation();
        return invitation ? new Agent(*invitation) : new QObject;
    }
};

} // namespace Vantle::Agent

#include "agentplugin.moc"
