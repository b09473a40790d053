#include "flicksupport.h"

#include "tracelib/configuration.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

#include <cinttypes>
#include <cstdio>
#include <ostream>
#include <utility>

namespace VantleTest {

LibraryLog::LibraryLog()
{
    Vantle::QtQuickCommon::setLogger(this);
}

LibraryLog::~LibraryLog()
{
    Vantle::QtQuickCommon::setLogger(nullptr);
}

TraceLog::TraceLog()
{
    corvaline::tracelib::setSink([this](const corvaline::tracelib::TracePoint &, const char *text,
                                        corvaline::tracelib::VariableSnapshot *) { m_texts.emplace_back(text); });
    corvaline::tracelib::setGroups("qtquick");
}

TraceLog::~TraceLog()
{
    corvaline::tracelib::setGroups("");
    corvaline::tracelib::setSink({});
}

std::vector<std::string> TraceLog::takeTexts()
{
    return std::exchange(m_texts, {});
}

std::string addressText(const void *address)
{
    char digits[32];
    std::snprintf(digits, sizeof digits, "0x%08" PRIxPTR, reinterpret_cast<std::uintptr_t>(address));
    return std::string(digits).substr(0, 10);
}

void PrintTo(const FlickReport &report, std::ostream *stream)
{
    *stream << (report.kind == FlickReport::Started ? "started " : "ended ") << report.flickable << " at "
            << report.position.x() << '/' << report.position.y() << " by " << report.item;
}

void FlickReports::flickStarted(QQuickItem *flickable, const QPointF &position, QQuickItem *item)
{
    m_reports.push_back({FlickReport::Started, flickable, position, item});
    if (onStarted)
        onStarted();
}

void FlickReports::flickEnded(QQuickItem *flickable, const QPointF &position, QQuickItem *item)
{
    m_reports.push_back({FlickReport::Ended, flickable, position, item});
    if (onEnded)
        onEnded();
}

std::vector<FlickReport> FlickReports::take()
{
    return std::exchange(m_reports, {});
}

} // namespace VantleTest
