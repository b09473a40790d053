#include "wrappers/qt/extensions/qtquick/namechoice_p.h"

#include "wrappers/qt/extensions/qtquick/computedproperties_p.h"
#include "wrappers/qt/extensions/qtquick/itemtexts_p.h"
#include "wrappers/qt/extensions/qtquick/viewentries_p.h"
#include "wrappers/qt/qmltypes.h"

#include <algorithm>

namespace Vantle::QtWrapper {

namespace {

// In order of preference. What isn't a property of the item is computed, but for
// the first three: a label of the item's own is as good as a title.
constexpr const char *OwnKeys[] = {"text", "title", "label"};
constexpr const char *FurtherKeys[] = {"accessibleName",  "iconName", "iconFile", "toolTip",
                                       "placeholderText", "source",   "label"};

// Names grow by a step with each; and a scene may be nested without end.
constexpr int mostSteps = 4;
constexpr qsizetype mostAncestors = 12;

// A key that no item has is asked of extensions for each item that a lookup meets,
// which takes as long as comparing many. Among more than these, being one of
// several is told sooner than what tells it from all others.
constexpr qsizetype mostAsked = 1500;

const QString objectNameKey = QStringLiteral("objectName");
const QString idKey = QStringLiteral("id");

bool isControl(const QQuickItem *item)
{
    return item->inherits("QQuickControl");
}

// Whether the type alone says to a reader which item is meant, as that of a
// rectangle or a row doesn't.
bool isTelling(const QQuickItem *item)
{
    return isControl(item) || item->inherits("QQuickFlickable") || item->inherits("QQuickPathView")
        || item->inherits("QQuickTextInput") || item->inherits("QQuickTextEdit")
        || isCustomQmlTypeName(item->metaObject()->className());
}

// What controls put their contents into is no part that anybody knows of; its
// object name is that of its class.
bool isInternal(const QQuickItem *item)
{
    return item->inherits("QQuickContentItem");
}

bool isPartOfControl(const QQuickItem *item)
{
    for (const QQuickItem *ancestor = item->parentItem(); ancestor; ancestor = ancestor->parentItem()) {
        if (isControl(ancestor))
            return !ancestor->inherits("QQuickPane");
        if (isTelling(ancestor))
            return false;
    }
    return false;
}

bool isAskedOfExtensions(const QPointer<QQuickItem> &item, const QString &key)
{
    return isComputedProperty(key) && item && !item->property(key.toLatin1()).isValid();
}

} // namespace

/// The item that a name is chosen for, and what has been found out about it.
struct NameChooser::Subject
{
    qsizetype position;
    int depth;
    QPointer<QQuickItem> item;
    std::optional<ViewEntry> entry{};
    qsizetype scope = -1;      ///< the position below which it is looked for at least; -1 for the window
    bool isScopeFixed = false; ///< an extension has named it
    bool isCrowded = false;    ///< too many items around it to ask extensions about each
    Range range{};             ///< what lies in the scope
    QList<Candidate> candidates{};
    std::optional<QList<qsizetype>> namedAncestors{};
};

NameChoice NameChooser::choose(QQuickItem *item, const QQuickItem *container)
{
    const qsizetype position = m_census.positionOf(item);
    if (position < 0)
        return {};
    if (!container)
        return chooseAt(position, 0);
    Subject subject{position, 0, item, viewEntryOf(item), m_census.positionOf(container), true};
    return chooseFor(subject);
}

NameChoice NameChooser::chooseAt(qsizetype position, int depth)
{
    const auto known = m_known.constFind(position);
    if (known != m_known.cend() && known->depth <= depth)
        return known->choice;
    const QPointer<QQuickItem> item = m_census.itemAt(position);
    if (!item)
        return {};
    Subject subject{position, depth, item, viewEntryOf(item)};
    findScope(&subject);
    const NameChoice choice = chooseFor(subject);
    m_known.insert(position, {choice, choice.isUnique ? 0 : depth});
    return choice;
}

// What a view has made for a row of its model is there as often as there are
// rows: such a row is looked for below the view, its parts below the row.
void NameChooser::findScope(Subject *subject)
{
    if (subject->depth >= mostSteps)
        return;
    for (qsizetype ancestor = m_census.parentOf(subject->position); ancestor >= 0;
         ancestor = m_census.parentOf(ancestor)) {
        const QPointer<QQuickItem> item = m_census.itemAt(ancestor);
        if (!item)
            return;
        const std::optional<ViewEntry> entry = viewEntryOf(item);
        const bool isOwnView = subject->entry && !subject->entry->isFixed && item == subject->entry->view;
        const bool isDelegate = entry && !entry->isFixed;
        if ((isOwnView || isDelegate) && isGoodContainer(ancestor, subject->depth + 1)) {
            subject->scope = ancestor;
            return;
        }
    }
}

NameChoice NameChooser::chooseFor(Subject &subject)
{
    subject.range = subject.scope < 0 ? m_census.everything() : m_census.below(subject.scope);
    subject.candidates = candidatesOf(subject.position, subject.entry && !subject.entry->isFixed);
    limitAsking(&subject);
    using Way = std::optional<NameChoice> (NameChooser::*)(Subject &);
    for (const Way way : {&NameChooser::byText, &NameChooser::byPlaceInView, &NameChooser::byTypeAlone,
                          &NameChooser::belowNamedAncestor, &NameChooser::byAllTexts}) {
        if (!subject.item)
            return {};
        if (const std::optional<NameChoice> choice = (this->*way)(subject))
            return *choice;
    }
    return closest(subject);
}

void NameChooser::limitAsking(Subject *subject)
{
    const bool isAsked = subject->entry
        || std::any_of(subject->candidates.cbegin(), subject->candidates.cend(),
                       [](const Candidate &candidate) { return candidate.isAsked; });
    if (!isAsked)
        return;
    const qsizetype container = narrowContainerOf(*subject);
    const Range range = container < 0 ? m_census.everything() : m_census.below(container);
    subject->isCrowded = range.end - range.begin > mostAsked;
    if (subject->isCrowded)
        subject->candidates.removeIf([](const Candidate &candidate) { return candidate.isAsked; });
}

// The id of a delegate is shared by all rows.
QList<NameChooser::Candidate> NameChooser::candidatesOf(qsizetype position, bool isEntry) const
{
    const QPointer<QQuickItem> item = m_census.itemAt(position);
    QList<Candidate> candidates;
    const auto add = [&](const QString &key, const QString &text, bool isAsked) {
        if (isFitForName(text))
            candidates.append({key, text, isAsked});
    };
    if (item && !isInternal(item))
        add(objectNameKey, item->objectName(), false);
    if (item && !isEntry)
        add(idKey, declaredId(item), false);
    for (const char *key : OwnKeys) {
        QString text;
        if (!item || !readOwnText(item, key, &text) || !item)
            continue;
        if (qstrcmp(key, "text") != 0 || !isTextOfUser(item))
            add(QString::fromLatin1(key), text, false);
    }
    for (const char *key : FurtherKeys) {
        const QString name = QString::fromLatin1(key);
        QString text;
        QString guess;
        // An extension may know better, or none may be there to tell.
        if (!item || !guessText(item, name, &guess) || !isFitForName(guess))
            continue;
        if (item && readText(item, name, &text) && text == guess)
            add(name, text, isAskedOfExtensions(item, name));
    }
    return candidates;
}

std::optional<NameChoice> NameChooser::byText(Subject &subject)
{
    for (const Candidate &candidate : std::as_const(subject.candidates)) {
        if (!m_census.isOnlyOneWith(subject.position, candidate.key, candidate.text, subject.range))
            continue;
        const qsizetype container = candidate.isAsked ? narrowContainerOf(subject) : subject.scope;
        return choiceOf(subject, {{candidate.key, candidate.text}}, container);
    }
    return std::nullopt;
}

std::optional<NameChoice> NameChooser::byPlaceInView(Subject &subject)
{
    if (!subject.entry)
        return std::nullopt;
    QMap<QString, QString> place;
    for (const QString &key : {QStringLiteral("index"), QStringLiteral("row"), QStringLiteral("column")}) {
        const std::optional<QString> number = subject.item ? computedProperty(subject.item, key) : std::nullopt;
        QString text;
        if (!number)
            continue;
        if (subject.isCrowded && isAskedOfExtensions(subject.item, key))
            return std::nullopt;
        if (!readText(subject.item, key, &text) || text != *number)
            return std::nullopt;
        place.insert(key, text);
    }
    if (place.isEmpty())
        return std::nullopt;
    if (const std::optional<NameChoice> choice = inSomeContainer(subject, place))
        return choice;
    for (const Candidate &candidate : std::as_const(subject.candidates)) {
        QMap<QString, QString> texts = place;
        texts.insert(candidate.key, candidate.text);
        if (const std::optional<NameChoice> choice = inSomeContainer(subject, texts))
            return choice;
    }
    return std::nullopt;
}

// Below the nearest container where \p texts leave one item.
std::optional<NameChoice> NameChooser::inSomeContainer(Subject &subject, const QMap<QString, QString> &texts)
{
    QList<qsizetype> containers = namedAncestorsOf(subject);
    containers << narrowContainerOf(subject) << subject.scope;
    for (const qsizetype container : std::as_const(containers)) {
        const Range range = container < 0 ? m_census.everything() : m_census.below(container);
        if (m_census.isOnlyOneWith(subject.position, texts, range))
            return choiceOf(subject, texts, container);
    }
    return std::nullopt;
}

std::optional<NameChoice> NameChooser::byTypeAlone(Subject &subject)
{
    const bool isWhole = isTelling(subject.item) && !isPartOfControl(subject.item);
    if ((!isWhole && subject.scope < 0) || !m_census.isOnlyOfItsType(subject.position, subject.range))
        return std::nullopt;
    return choiceOf(subject, {}, subject.scope);
}

std::optional<NameChoice> NameChooser::belowNamedAncestor(Subject &subject)
{
    const QList<qsizetype> containers = namedAncestorsOf(subject);
    for (const Candidate &candidate : std::as_const(subject.candidates)) {
        for (const qsizetype container : containers) {
            if (m_census.isOnlyOneWith(subject.position, candidate.key, candidate.text, m_census.below(container)))
                return choiceOf(subject, {{candidate.key, candidate.text}}, container);
        }
    }
    for (const qsizetype container : containers) {
        if (m_census.isOnlyOfItsType(subject.position, m_census.below(container)))
            return choiceOf(subject, {}, container);
    }
    if (m_census.isOnlyOfItsType(subject.position, subject.range))
        return choiceOf(subject, {}, subject.scope);
    return std::nullopt;
}

std::optional<NameChoice> NameChooser::byAllTexts(Subject &subject)
{
    QMap<QString, QString> texts;
    for (const Candidate &candidate : std::as_const(subject.candidates)) {
        if (!texts.contains(candidate.key))
            texts.insert(candidate.key, candidate.text);
    }
    return texts.size() < 2 ? std::nullopt : inSomeContainer(subject, texts);
}

// One of several, which the lookup is going to count.
NameChoice NameChooser::closest(Subject &subject)
{
    QMap<QString, QString> texts;
    for (const Candidate &candidate : std::as_const(subject.candidates)) {
        if (texts.isEmpty() || (candidate.key == idKey))
            texts.insert(candidate.key, candidate.text);
    }
    const QList<qsizetype> containers = namedAncestorsOf(subject);
    NameChoice choice = choiceOf(subject, texts, containers.isEmpty() ? subject.scope : containers.first());
    choice.isUnique = false;
    return choice;
}

// From the nearest outwards.
QList<qsizetype> &NameChooser::namedAncestorsOf(Subject &subject)
{
    if (subject.namedAncestors)
        return *subject.namedAncestors;
    QList<qsizetype> named;
    qsizetype ancestor = subject.isScopeFixed ? subject.scope : m_census.parentOf(subject.position);
    for (qsizetype i = 0; i < mostAncestors && ancestor != subject.scope && ancestor >= 0; ++i) {
        if (isGoodContainer(ancestor, subject.depth + 1))
            named.append(ancestor);
        ancestor = m_census.parentOf(ancestor);
    }
    subject.namedAncestors = named;
    return *subject.namedAncestors;
}

// Where extensions are asked about few items: below the nearest good container,
// or else below anything that is the only one of its type.
qsizetype NameChooser::narrowContainerOf(Subject &subject)
{
    if (const QList<qsizetype> &named = namedAncestorsOf(subject); !named.isEmpty())
        return named.first();
    // Views, delegates and what extensions name are narrow enough.
    if (subject.scope >= 0 || subject.isScopeFixed)
        return subject.scope;
    qsizetype ancestor = m_census.parentOf(subject.position);
    for (qsizetype i = 0; i < mostAncestors && ancestor >= 0; ++i) {
        const QPointer<QQuickItem> item = m_census.itemAt(ancestor);
        if (subject.depth < mostSteps && item && !isInternal(item) && chooseAt(ancestor, subject.depth + 1).isUnique)
            return ancestor;
        ancestor = m_census.parentOf(ancestor);
    }
    return subject.scope;
}

bool NameChooser::isGoodContainer(qsizetype position, int depth)
{
    if (depth > mostSteps)
        return false;
    const NameChoice choice = chooseAt(position, depth);
    const QPointer<QQuickItem> item = m_census.itemAt(position);
    return item && choice.isUnique && !isInternal(item) && (!choice.texts.isEmpty() || isTelling(item));
}

NameChoice NameChooser::choiceOf(const Subject &subject, const QMap<QString, QString> &texts, qsizetype container) const
{
    const bool isAtWindow = container < 0 || subject.isScopeFixed;
    return {texts, isAtWindow ? QPointer<QQuickItem>() : m_census.itemAt(container), true};
}

} // namespace Vantle::QtWrapper
