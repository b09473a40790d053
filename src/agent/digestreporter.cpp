#include "agent/digestreporter.h"

#include "agent/scenedigest.h"
#include "protocol/connection.h"
#include "protocol/messages.h"

#include <utility>

namespace Vantle::Agent {

void DigestReporter::statementSent()
{
    report();
    if (std::exchange(m_isSecondDue, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isSecondDue = false;
            report();
        },
        Qt::QueuedConnection);
}

void DigestReporter::report()
{
    m_connection->notify(Protocol::Method::digest, digestOfScene().toJson());
}

} // namespace Vantle::Agent
