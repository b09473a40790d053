#pragma once

#include <chrono>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string>

namespace corvaline::tracelib {

struct TracePoint;
class VariableSnapshot;

/// A visit as one line, with its line end: time in UTC, group, file and line,
/// function and message, separated by tabs, and a last field for the variables
/// if there are any. What would break the line or its fields is escaped.
std::string traceLine(std::chrono::system_clock::time_point time, const TracePoint &point, const char *text,
                      VariableSnapshot *snapshot);

/// Writes trace lines, each with one call to the system, to a file that it
/// appends to or to standard error.
class LineWriter
{
public:
    /// An empty \p path stands for standard error. The file is opened at the first line.
    explicit LineWriter(std::string path);

    void write(const std::string &line);

private:
    struct Close
    {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };

    std::FILE *stream();

    const std::string m_path;
    std::mutex m_mutex;
    std::unique_ptr<std::FILE, Close> m_file;
    bool m_openingFailed = false;
};

} // namespace corvaline::tracelib
