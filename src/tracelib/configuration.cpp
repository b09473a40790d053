#include "tracelib/configuration_p.h"

#include "tracelib/traceline_p.h"
#include "tracelib/tracepoint.h"

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace corvaline::tracelib {

namespace Internal {

constinit std::atomic<std::uintptr_t> currentConfiguration = tracingUndecided;

} // namespace Internal

namespace {

using Internal::currentConfiguration;

struct Configuration
{
    std::mutex mutex;
    std::vector<std::string> groups;
    std::string file;
    std::shared_ptr<const Sink> sink;
    std::shared_ptr<const Sink> lines;
    std::uintptr_t lastGeneration = Internal::tracingUndecided;
};

// Never destroyed: places may be visited during exit.
Configuration &configuration()
{
    static Configuration *const instance = new Configuration;
    return *instance;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::vector<std::string> splitGroups(std::string_view groups)
{
    std::vector<std::string> result;
    while (!groups.empty()) {
        const std::size_t comma = std::min(groups.find(','), groups.size());
        if (const std::string_view group = trimmed(groups.substr(0, comma)); !group.empty())
            result.emplace_back(group);
        groups.remove_prefix(std::min(comma + 1, groups.size()));
    }
    return result;
}

std::shared_ptr<const Sink> lineSink(const std::string &file)
{
    const auto writer = std::make_shared<LineWriter>(file);
    return std::make_shared<const Sink>(
        [writer](const TracePoint &point, const char *text, VariableSnapshot *snapshot) {
            writer->write(traceLine(std::chrono::system_clock::now(), point, text, snapshot));
        });
}

void applyGroups(Configuration &current, std::string_view groups)
{
    current.groups = splitGroups(groups);
    const std::uintptr_t generation = current.groups.empty() ? Internal::tracingOff : ++current.lastGeneration;
    currentConfiguration.store(generation, std::memory_order_release);
}

void applyEnvironment(Configuration &current)
{
    const char *const file = std::getenv("VANTLE_TRACE_FILE");
    current.file = file ? file : "";
    current.lines = nullptr;
    const char *const groups = std::getenv("VANTLE_TRACE");
    applyGroups(current, groups ? groups : "");
}

void ensureDecided(Configuration &current)
{
    if (currentConfiguration.load(std::memory_order_relaxed) == Internal::tracingUndecided)
        applyEnvironment(current);
}

bool holdsGroup(const Configuration &current, const char *group)
{
    return std::any_of(current.groups.begin(), current.groups.end(),
                       [group](const std::string &candidate) { return candidate == "*" || candidate == group; });
}

} // namespace

void decide(TracePoint &point)
{
    Configuration &current = configuration();
    const std::lock_guard lock(current.mutex);
    ensureDecided(current);
    const std::uintptr_t generation = currentConfiguration.load(std::memory_order_relaxed);
    // Another thread may have decided meanwhile, and a user silenced the point since.
    if (point.decidedFor.load(std::memory_order_relaxed) == generation)
        return;
    point.active.store(holdsGroup(current, point.group), std::memory_order_relaxed);
    point.decidedFor.store(generation, std::memory_order_release);
}

std::shared_ptr<const Sink> sinkFor(const TracePoint &point)
{
    Configuration &current = configuration();
    const std::lock_guard lock(current.mutex);
    ensureDecided(current);
    if (!holdsGroup(current, point.group))
        return nullptr;
    if (current.sink)
        return current.sink;
    if (!current.lines)
        current.lines = lineSink(current.file);
    return current.lines;
}

void setGroups(std::string_view groups)
{
    Configuration &current = configuration();
    const std::lock_guard lock(current.mutex);
    ensureDecided(current);
    applyGroups(current, groups);
}

void setSink(Sink sink)
{
    Configuration &current = configuration();
    // Destroyed after the lock is released, as a sink's destructor may trace.
    std::shared_ptr<const Sink> next;
    if (sink)
        next = std::make_shared<const Sink>(std::move(sink));
    const std::lock_guard lock(current.mutex);
    current.sink.swap(next);
}

void configureFromEnvironment()
{
    Configuration &current = configuration();
    const std::lock_guard lock(current.mutex);
    applyEnvironment(current);
}

} // namespace corvaline::tracelib
