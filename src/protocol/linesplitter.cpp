#include "protocol/linesplitter.h"

namespace Vantle::Protocol {

namespace {

// A line's place in the list, and the head of its block on the heap.
constexpr qsizetype costOfLine = 64;

} // namespace

bool LineSplitter::feed(QByteArrayView bytes)
{
    while (!bytes.isEmpty() && !m_refused) {
        const qsizetype end = bytes.indexOf('\n');
        const QByteArrayView part = end < 0 ? bytes : bytes.first(end);
        if (part.size() > m_limit - m_partial.size()) {
            m_refused = true;
            m_partial = QByteArray();
            break;
        }
        m_partial.append(part);
        if (end < 0)
            break;
        m_backlog += m_partial.size() + costOfLine;
        m_lines.push_back(std::exchange(m_partial, QByteArray()));
        bytes = bytes.sliced(end + 1);
    }
    return !m_refused;
}

QByteArray LineSplitter::takeLine()
{
    QByteArray line = std::move(m_lines.front());
    m_lines.pop_front();
    m_backlog -= line.size() + costOfLine;
    return line;
}

void LineSplitter::clear()
{
    m_lines.clear();
    m_backlog = 0;
    m_partial = QByteArray();
}

} // namespace Vantle::Protocol
