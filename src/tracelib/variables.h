#pragma once

#include "tracelib/tracelibglobal.h"

#include <string>
#include <variant>
#include <vector>

namespace corvaline::tracelib {

/// A value as it goes into a trace: a text, a number or a truth value.
///
/// Owns a copy of what it was made from.
class CORVALINE_TRACELIB_EXPORT VariableValue
{
public:
    /// \p value is UTF-8, up to its first zero byte. Null gives the empty text.
    static VariableValue stringValue(const char *value);
    static VariableValue numberValue(long long value);
    static VariableValue booleanValue(bool value);

    /// Writes \p value as text: a text as it is, a number in decimal digits, a
    /// truth value as "true" or "false".
    ///
    /// Returns the size in bytes that the whole text needs with its terminator.
    /// A \p buffer smaller than that gets what fits, terminated; a null buffer,
    /// or a size of 0, gets nothing.
    static unsigned long long convertToString(const VariableValue &value, char *buffer, unsigned long long size);

private:
    using Content = std::variant<std::string, long long, bool>;

    explicit VariableValue(Content content);

    Content m_content;
};

/// A variable of the program, shown beside the message of a visit.
class CORVALINE_TRACELIB_EXPORT AbstractVariable
{
public:
    virtual ~AbstractVariable();

    /// Never null, and valid as long as the variable.
    virtual const char *name() const = 0;
    virtual VariableValue value() const = 0;
};

/// The variables that one visit shows, in order.
///
/// Does not own them: who made the snapshot deletes the variables first, and
/// the snapshot then.
class CORVALINE_TRACELIB_EXPORT VariableSnapshot
{
public:
    VariableSnapshot();
    ~VariableSnapshot();
    VariableSnapshot(const VariableSnapshot &) = delete;
    VariableSnapshot &operator=(const VariableSnapshot &) = delete;

    void add(AbstractVariable *variable);

    unsigned long long size() const noexcept;
    /// \p index must be below size().
    AbstractVariable *&operator[](unsigned long long index);

private:
    std::vector<AbstractVariable *> m_variables;
};

} // namespace corvaline::tracelib
