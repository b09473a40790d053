#include "tracelib/traceline_p.h"

#include "tracelib/tracepoint.h"
#include "tracelib/variables.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <string_view>
#include <utility>

namespace corvaline::tracelib {

namespace {

void appendEscaped(std::string &line, std::string_view text)
{
    for (const char c : text) {
        switch (c) {
        case '\\': line += "\\\\"; break;
        case '\n': line += "\\n"; break;
        case '\r': line += "\\r"; break;
        case '\t': line += "\\t"; break;
        default: line += c;
        }
    }
}

std::string timeText(std::chrono::system_clock::time_point time)
{
    using namespace std::chrono;
    const auto second = floor<seconds>(time);
    const std::time_t wholeSeconds = system_clock::to_time_t(second);
    std::tm broken = {};
    gmtime_r(&wholeSeconds, &broken);
    char date[32] = {};
    std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", &broken);
    const std::string fraction = std::to_string(1000 + floor<milliseconds>(time - second).count()).substr(1);
    return std::string(date) + '.' + fraction + 'Z';
}

std::string textOf(const VariableValue &value)
{
    std::string text(VariableValue::convertToString(value, nullptr, 0), '\0');
    VariableValue::convertToString(value, text.data(), text.size());
    text.pop_back();
    return text;
}

void appendVariables(std::string &line, VariableSnapshot &snapshot)
{
    for (unsigned long long i = 0; i < snapshot.size(); ++i) {
        line += i == 0 ? '\t' : ' ';
        appendEscaped(line, snapshot[i]->name());
        line += '=';
        appendEscaped(line, textOf(snapshot[i]->value()));
    }
}

} // namespace

std::string traceLine(std::chrono::system_clock::time_point time, const TracePoint &point, const char *text,
                      VariableSnapshot *snapshot)
{
    std::string line = timeText(time);
    line += '\t';
    appendEscaped(line, point.group);
    line += '\t';
    appendEscaped(line, point.file);
    line += ':' + std::to_string(point.line) + '\t';
    appendEscaped(line, point.function);
    line += '\t';
    appendEscaped(line, text);
    if (snapshot)
        appendVariables(line, *snapshot);
    line += '\n';
    return line;
}

LineWriter::LineWriter(std::string path) : m_path(std::move(path))
{
}

void LineWriter::write(const std::string &line)
{
    const std::lock_guard lock(m_mutex);
    std::FILE *const target = stream();
    std::fwrite(line.data(), 1, line.size(), target);
    std::fflush(target);
}

std::FILE *LineWriter::stream()
{
    if (m_file)
        return m_file.get();
    if (!m_path.empty() && !m_openingFailed) {
        m_file.reset(std::fopen(m_path.c_str(), "a"));
        if (m_file) {
            // Lines longer than the buffer would be written in pieces, between
            // which another process that appends to the file could get its own.
            std::setvbuf(m_file.get(), nullptr, _IOFBF, 1 << 16);
            return m_file.get();
        }
        m_openingFailed = true;
        std::fprintf(stderr, "Cannot open trace file \"%s\" (%s), tracing to standard error instead\n", m_path.c_str(),
                     std::strerror(errno));
    }
    return stderr;
}

} // namespace corvaline::tracelib
