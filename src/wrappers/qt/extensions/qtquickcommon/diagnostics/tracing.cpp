#include "wrappers/qt/extensions/qtquickcommon/diagnostics/tracing.h"

#include <QtCore/QDebug>
#include <QtCore/QPointF>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <cinttypes>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace Vantle::QtQuickCommon {

using corvaline::tracelib::VariableSnapshot;

namespace {

template<typename T>
VariableValue debugText(const T &value)
{
    QString text;
    QDebug(&text).nospace() << value;
    return VariableValue::stringValue(text.toUtf8().constData());
}

template<typename T>
VariableValue variantText(const T &value)
{
    return VariableValue::stringValue(QVariant::fromValue(value).toString().toUtf8().constData());
}

} // namespace

VariableValue toVariableValue(const char *text)
{
    std::ostringstream stream;
    stream << text;
    return VariableValue::stringValue(stream.str().c_str());
}

VariableValue toVariableValue(long long number)
{
    return VariableValue::numberValue(number);
}

VariableValue toVariableValue(const QQuickItem *item)
{
    // Qt 6's operator wants a non-const item, which it only reads.
    return debugText(const_cast<QQuickItem *>(item));
}

VariableValue toVariableValue(const QQuickWindow *window)
{
    return debugText(window);
}

VariableValue toVariableValue(const QPointF &point)
{
    return debugText(point);
}

VariableValue toVariableValue(const QString &text)
{
    return variantText(text);
}

VariableValue toVariableValue(const QList<QString> &texts)
{
    return variantText(texts);
}

VariableValue addressToVariableValue(std::uintptr_t address)
{
    // A buffer for eight digits: longer addresses lose their last ones.
    char buffer[11] = {};
    [[maybe_unused]] const int length = std::snprintf(buffer, sizeof buffer, "0x%08" PRIxPTR, address);
    return toVariableValue(static_cast<const char *>(buffer));
}

TraceRecorder &TraceRecorder::add(const VariableValue &value)
{
    if (!text)
        text = new std::ostringstream;
    std::vector<char> buffer(VariableValue::convertToString(value, nullptr, 0));
    VariableValue::convertToString(value, buffer.data(), buffer.size());
    *text << buffer.data();
    return *this;
}

void TraceRecorder::finish() const
{
    if (!point->active.load(std::memory_order_relaxed))
        return;
    corvaline::tracelib::visitTracePoint(point, message().c_str(), snapshot);
}

std::string TraceRecorder::message() const
{
    return text ? text->str() : std::string();
}

void TraceRecorder::release()
{
    if (snapshot) {
        VariableSnapshot &variables = *snapshot;
        for (unsigned long long i = 0; i < variables.size(); ++i)
            delete variables[i];
        delete snapshot;
    }
    delete text;
}

} // namespace Vantle::QtQuickCommon
