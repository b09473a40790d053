#pragma once

#include <QtCore/QByteArray>

#include <deque>

namespace Vantle::Protocol {

/// Cuts a stream of bytes into lines and refuses a line that gets too long
/// before it has been buffered whole. Plain data, no thread of its own.
class LineSplitter
{
public:
    /// Longest line that is accepted, in bytes without its end.
    void setLimit(qsizetype bytes) { m_limit = bytes; }

    /// Takes further bytes of the stream. False if a line exceeds the limit;
    /// the lines ahead of it are kept, and everything from it on is refused.
    bool feed(QByteArrayView bytes);

    bool hasLine() const { return !m_lines.empty(); }

    /// About how much memory the complete lines take, in bytes. Short lines
    /// take more than their length.
    qsizetype backlog() const { return m_backlog; }

    /// Removes and returns the oldest complete line, without its end. Only to
    /// be called if there is one.
    QByteArray takeLine();

    /// True if the stream stands in the middle of a line.
    bool hasPartialLine() const { return !m_partial.isEmpty(); }

    void clear();

private:
    qsizetype m_limit = 0;
    QByteArray m_partial;
    std::deque<QByteArray> m_lines;
    qsizetype m_backlog = 0;
    bool m_refused = false;
};

} // namespace Vantle::Protocol
