#pragma once

#include <QtCore/QJsonValue>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <optional>

class QJSValue;

namespace Vantle {
class Object;
template<typename T>
class SharedPtr;
} // namespace Vantle

namespace Vantle::Agent {

class ObjectHandles;

/// Writes values of the program as JSON and reads them again. docs/protocol.md
/// has the form of each type. Made for one answer.
class ValueEncoding
{
public:
    /// Whether objects come with their names. A name costs a walk over the scene.
    enum Naming {
        WithNames,
        WithoutNames
    };

    /// \p handles must outlive the encoding.
    explicit ValueEncoding(ObjectHandles *handles, Naming naming = WithNames) : m_handles(handles), m_naming(naming) {}

    QJsonValue encode(const QVariant &value);
    /// An argument or a result of a script function.
    QJsonValue encode(const SharedPtr<Object> &object);

    /// The value that \p json stands for. Nothing if it makes no sense, or
    /// refers to an object that is gone; then \p problem says so.
    std::optional<QVariant> decode(const QJsonValue &json, QString *problem) const;
    /// Same, as an argument of a script function.
    std::optional<SharedPtr<Object>> decodeArgument(const QJsonValue &json, QString *problem) const;

    /// A reference to a living object: its handle, class and, with names, its name.
    QJsonValue reference(const SharedPtr<Object> &object);

private:
    QJsonValue encodeAt(int depth, const QVariant &value);
    QJsonValue encodeScriptValue(int depth, const QJSValue &value);
    QJsonValue encodeContainer(int depth, const QVariant &value);

    ObjectHandles *m_handles;
    Naming m_naming;
    int m_named = 0;
};

} // namespace Vantle::Agent
