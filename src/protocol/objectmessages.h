#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QRect>
#include <QtCore/QString>

#include <optional>

/// What the requests about the program's objects answer, as plain records. For
/// `toJson` and `fromJson` see protocol/messages.h.
namespace Vantle::Protocol {

/// An object of the program. As long as its handle is not released, the agent
/// gives it no other one.
struct ObjectReference
{
    int object = 0;    ///< the handle, above 0
    QString className; ///< "class"
    /// The selector or alias that leads to it, empty if nothing does; none if it was not asked for.
    std::optional<QString> name;

    QJsonObject toJson() const;
    static std::optional<ObjectReference> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// One property in which an object differs from what a name asks for.
struct Difference
{
    QString key;
    QString expected; ///< as it stands in the selector: the operator and the quoted text
    QString found;    ///< the property's text; "not there" without quotes if the object has none

    QJsonObject toJson() const;
    static std::optional<Difference> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// An object that a name might have meant.
struct Candidate
{
    QString name;
    QString className; ///< "class"
    QList<Difference> differences;

    QJsonObject toJson() const;
    static std::optional<Candidate> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// Why a name leads to nothing: the data of the error ObjectNotFound.
struct NotFound
{
    QString lookedFor;
    QString reason;
    QList<Candidate> candidates; ///< the closest first; few

    QJsonObject toJson() const;
    static std::optional<NotFound> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// Why an object could not be acted on: the data of the error ObjectNotReady.
struct NotReady
{
    QString lookedFor;
    QString reason;
    QString coveredBy; ///< name of the object that is in the way; empty if none is

    QJsonObject toJson() const;
    static std::optional<NotReady> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// What a user sees of an object: the result of "describe".
struct Description
{
    QString className; ///< "class"
    QString name;
    QRect geometry; ///< logical pixels of the screen; invalid for what has no place there
    bool visible = false;
    bool enabled = false;
    QString notReady; ///< why a user could not act on it now; empty when one could

    QJsonObject toJson() const;
    static std::optional<Description> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// An object with everything below it: what the result of "tree" is made of.
struct TreeNode
{
    QString className; ///< "class"
    QString type;      ///< as scripts write the class
    QString name;
    QString id;
    QRect geometry;
    bool visible = false;
    QString notReady;
    QList<TreeNode> children;

    QJsonObject toJson() const;
    static std::optional<TreeNode> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// A function that scripts can call: what the result of "functions" is made of.
struct FunctionDescription
{
    struct Argument
    {
        QString name;
        QString type;
    };
    struct Overload
    {
        QList<Argument> arguments;
        QString result; ///< its type; "void" if there is none
    };

    QString name;
    QList<Overload> overloads;

    QJsonObject toJson() const;
    static std::optional<FunctionDescription> fromJson(const QJsonObject &json, QString *error = nullptr);
};

/// Where a function acted: a part of the result of "call".
struct ActionPoint
{
    int window = 0; ///< handle
    int x = 0;      ///< logical pixels of the window
    int y = 0;

    QJsonObject toJson() const;
    static std::optional<ActionPoint> fromJson(const QJsonObject &json, QString *error = nullptr);
};

} // namespace Vantle::Protocol
