#pragma once

#include <QtCore/QObject>

namespace Vantle::Protocol {
class Connection;
}

namespace Vantle::Agent {

/// Tells the tool what there is behind each statement, while something is recorded.
///
/// A statement comes when the user's next input is known, and then all that it
/// did has taken effect; or from inside of the event that it records, as that of
/// a window being closed. So there are two digests for each: one at once, and one
/// when that event has been handled.
class DigestReporter final : public QObject
{
    Q_OBJECT

public:
    /// \p connection must outlive the reporter.
    explicit DigestReporter(Protocol::Connection *connection) : m_connection(connection) {}

    /// A statement has just been sent.
    void statementSent();

private:
    void report();

    Protocol::Connection *m_connection;
    bool m_isSecondDue = false;
};

} // namespace Vantle::Agent
