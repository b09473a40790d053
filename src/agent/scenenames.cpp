#include "agent/scenenames.h"

#include "wrappers/qt/application.h"
#include "wrappers/qt/qmltypes.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QSet>
#include <QtQuick/QQuickItem>

#include <algorithm>
#include <optional>
#include <vector>

namespace Vantle::Agent {

namespace {

const QString containerKey = QStringLiteral("container");
const QString typeKey = QStringLiteral("type");

/// All texts by which a name may give the type of \p object.
QSet<QString> typeTexts(const QObject *object)
{
    const QMetaObject *const type = object->metaObject();
    return {QString::fromUtf8(type->className()), QString::fromUtf8(QtWrapper::cleanQmlClassName(type)),
            QString::fromUtf8(QtWrapper::scriptTypeName(type))};
}

bool asksForSomethingVisible(const ObjectName::Properties &properties)
{
    const auto visible = properties.constFind(QStringLiteral("visible"));
    return visible != properties.cend() && visible->stringValue() != QLatin1String("false");
}

} // namespace

/// What is below one container, in the order in which occurrences count.
class SceneNames::Container
{
public:
    Container(const SharedPtr<Object> &container, const QtWrapper::NameGenerator *generator) : m_generator(generator)
    {
        collect(container);
    }

    /// Which of the objects that fit \p properties \p object is; 0 or 1 if it needs no telling.
    qsizetype occurrenceOf(const SharedPtr<Object> &object, const QString &set,
                           const ObjectName::Properties &properties)
    {
        const auto position = m_positions.constFind(object.get());
        if (position == m_positions.cend())
            return matchesFor(set, properties).size();
        const QList<qsizetype> &matches = matchesFor(set, properties);
        return std::upper_bound(matches.cbegin(), matches.cend(), *position) - matches.cbegin();
    }

private:
    /// The texts of one property of all objects, and who has which.
    struct Texts
    {
        QList<QSet<QString>> byPosition;
        QHash<QString, QList<qsizetype>> positions;
    };

    void collect(const SharedPtr<Object> &container);
    const QList<qsizetype> &matchesFor(const QString &set, const ObjectName::Properties &properties);
    const Texts &textsOf(const QString &key);

    const QtWrapper::NameGenerator *m_generator;
    QList<SharedPtr<Object>> m_objects;
    QList<bool> m_isInSight; // whether a walk that leaves invisible items alone comes by
    QHash<const Object *, qsizetype> m_positions;
    QHash<QString, Texts> m_texts;
    QHash<QString, QList<qsizetype>> m_matches; // by the text of the properties
};

void SceneNames::Container::collect(const SharedPtr<Object> &container)
{
    struct Pending
    {
        SharedPtr<Object> object;
        bool isInSight;
    };
    std::vector<Pending> pending{{container, true}};
    while (!pending.empty()) {
        const auto [object, isInSight] = pending.back();
        pending.pop_back();
        const auto *const item = qobject_cast<QQuickItem *>(QtWrapper::nativeQObject(object));
        if (object != container) {
            if (!item)
                continue;
            m_positions.insert(object.get(), m_objects.size());
            m_objects.append(object);
            m_isInSight.append(isInSight);
        }
        const bool areChildrenInSight = isInSight && (object == container || item->isVisible());
        const ObjectList children = object->children();
        for (std::size_t i = children.size(); i > 0; --i)
            pending.push_back({children.at(i - 1), areChildrenInSight});
    }
}

const QList<qsizetype> &SceneNames::Container::matchesFor(const QString &set, const ObjectName::Properties &properties)
{
    if (const auto known = m_matches.constFind(set); known != m_matches.cend())
        return *known;
    // Of what has the rarest of the texts, what has the others too.
    QList<qsizetype> matches;
    bool isFirst = true;
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        const QList<qsizetype> having = textsOf(property.key()).positions.value(property->stringValue());
        if (isFirst || having.size() < matches.size())
            matches = having;
        isFirst = false;
    }
    const bool staysInSight = asksForSomethingVisible(properties);
    matches.removeIf([&](qsizetype position) {
        if (staysInSight && !m_isInSight.at(position))
            return true;
        for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
            if (!textsOf(property.key()).byPosition.at(position).contains(property->stringValue()))
                return true;
        }
        return false;
    });
    return *m_matches.insert(set, matches);
}

const SceneNames::Container::Texts &SceneNames::Container::textsOf(const QString &key)
{
    if (const auto known = m_texts.constFind(key); known != m_texts.cend())
        return *known;
    Texts texts;
    for (qsizetype i = 0; i < m_objects.size(); ++i) {
        QSet<QString> own;
        const QObject *const native = QtWrapper::nativeQObject(m_objects.at(i));
        QString text;
        if (native && key == typeKey)
            own = typeTexts(native);
        else if (m_generator->propertyText(m_objects.at(i), key, &text))
            own = {text};
        for (const QString &value : std::as_const(own))
            texts.positions[value].append(i);
        texts.byPosition.append(own);
    }
    return *m_texts.insert(key, texts);
}

SceneNames::SceneNames(QtWrapper::Application *application) : m_application(application)
{
}

SceneNames::~SceneNames() = default;

QString SceneNames::nameOf(const SharedPtr<Object> &object)
{
    if (!qobject_cast<QQuickItem *>(QtWrapper::nativeQObject(object)))
        return object->scriptName();
    const QtWrapper::NameGenerator *const generator = m_application->nameGenerator();
    ObjectName name = generator->objectName(object, false);
    if (name.isEmpty())
        return {};
    const PropertyValue containerName = name.property(containerKey);
    Container *const container = containerName.stringValue().isEmpty() ? nullptr
                                                                       : containerNamed(containerName.stringValue());
    if (!container)
        return generator->realName(object, true);
    name.removeProperty(containerKey);
    const qsizetype occurrence = container->occurrenceOf(object, name.qualifiedName(), name.properties());
    name.setProperty(containerKey, containerName);
    if (occurrence > 1) {
        name.setProperty(QStringLiteral("occurrence"),
                         PropertyValue(QString::number(occurrence), PropertyValue::Equals, PropertyValue::Text));
    }
    const QString qualified = name.qualifiedName();
    const QString alias = m_application->mappedNameFor(object, qualified);
    return alias.isEmpty() ? qualified : alias;
}

SceneNames::Container *SceneNames::containerNamed(const QString &name)
{
    if (const auto known = m_containers.constFind(name); known != m_containers.cend())
        return known->get();
    const SharedPtr<Object> container = m_application->objectForName(name);
    return m_containers
        .insert(name, container ? std::make_shared<Container>(container, m_application->nameGenerator()) : nullptr)
        ->get();
}

} // namespace Vantle::Agent
