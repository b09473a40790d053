#include "wrappers/qt/extensions/qtquick/scenecensus_p.h"

#include "wrappers/qt/extensions/qtquick/itemtexts_p.h"
#include "wrappers/qt/extensions/qtquick/quickchildren_p.h"
#include "wrappers/qt/qmltypes.h"

#include <algorithm>

namespace Vantle::QtWrapper {

SceneCensus::SceneCensus(QQuickWindow *window) : m_window(window)
{
    struct Pending
    {
        QQuickItem *item;
        qsizetype parent;
    };
    std::vector<Pending> pending;
    const auto push = [&pending](const QList<QQuickItem *> &items, qsizetype parent) {
        for (auto item = items.crbegin(); item != items.crend(); ++item)
            pending.push_back({*item, parent});
    };
    push(itemsBelowWindow(window), -1);
    // No code of the program runs here.
    while (!pending.empty()) {
        const auto [item, parent] = pending.back();
        pending.pop_back();
        add(item, parent);
        push(item->childItems(), static_cast<qsizetype>(m_entries.size()) - 1);
    }
    // From the last to the first, each item's stretch is part of its parent's.
    for (auto entry = m_entries.rbegin(); entry != m_entries.rend(); ++entry) {
        if (entry->parent >= 0) {
            Entry &parent = m_entries[static_cast<std::size_t>(entry->parent)];
            parent.end = std::max(parent.end, entry->end);
        }
    }
}

void SceneCensus::add(QQuickItem *item, qsizetype parent)
{
    const auto end = static_cast<qsizetype>(m_entries.size()) + 1;
    m_entries.push_back({item, parent, end, typeOf(item), item->isVisible()});
}

int SceneCensus::typeOf(const QQuickItem *item)
{
    const QMetaObject *const itsClass = item->metaObject();
    if (const auto known = m_typeOfClass.constFind(itsClass); known != m_typeOfClass.cend())
        return *known;
    const QByteArray name = scriptTypeName(itsClass);
    const auto type = m_typeOfName.constFind(name);
    const int number = type != m_typeOfName.cend() ? *type : static_cast<int>(m_typeOfName.size());
    m_typeOfName.insert(name, number);
    m_typeOfClass.insert(itsClass, number);
    return number;
}

qsizetype SceneCensus::positionOf(const QQuickItem *item) const
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [item](const Entry &other) { return other.item.data() == item; });
    return entry == m_entries.end() ? -1 : entry - m_entries.begin();
}

QPointer<QQuickItem> SceneCensus::itemAt(qsizetype position) const
{
    return m_entries[static_cast<std::size_t>(position)].item;
}

qsizetype SceneCensus::parentOf(qsizetype position) const
{
    return m_entries[static_cast<std::size_t>(position)].parent;
}

SceneCensus::Range SceneCensus::below(qsizetype position) const
{
    return {position + 1, m_entries[static_cast<std::size_t>(position)].end};
}

bool SceneCensus::isOnlyOfItsType(qsizetype position, Range range)
{
    return isAlone(position, ofType(m_entries[static_cast<std::size_t>(position)].type), range);
}

bool SceneCensus::isOnlyOneWith(qsizetype position, const QString &key, const QString &text, Range range)
{
    return isAlone(position, holdersOf(m_entries[static_cast<std::size_t>(position)].type, key, text), range);
}

bool SceneCensus::isOnlyOneWith(qsizetype position, const QMap<QString, QString> &texts, Range range)
{
    Positions common = ofType(m_entries[static_cast<std::size_t>(position)].type);
    for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
        const Positions &holders = holdersOf(m_entries[static_cast<std::size_t>(position)].type, text.key(), *text);
        common.removeIf(
            [&holders](qsizetype other) { return !std::binary_search(holders.cbegin(), holders.cend(), other); });
    }
    return isAlone(position, common, range);
}

const SceneCensus::Positions &SceneCensus::ofType(int type)
{
    const auto known = m_byType.constFind(type);
    if (known != m_byType.cend())
        return *known;
    Positions positions;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (m_entries[i].type == type)
            positions.append(static_cast<qsizetype>(i));
    }
    return *m_byType.insert(type, positions);
}

// At the first question of a kind only the text in question is looked for,
// which is what naming one item takes. At the second, all texts are kept.
const SceneCensus::Positions &SceneCensus::holdersOf(int type, const QString &key, const QString &text)
{
    const std::pair<int, QString> kind(type, key);
    const auto known = m_holders.constFind(kind);
    if (known != m_holders.cend() && (known->isComplete || known->askedFor == text))
        return m_holders[kind].byText[text];
    Holders holders;
    holders.askedFor = text;
    holders.isComplete = known != m_holders.cend();
    const Positions candidates = ofType(type);
    for (const qsizetype position : candidates) {
        QString found;
        const QPointer<QQuickItem> item = itemAt(position);
        if (item && guessText(item, key, &found) && (holders.isComplete || found == text))
            holders.byText[found].append(position);
    }
    // What was read may have asked for names.
    return (m_holders[kind] = holders).byText[text];
}

// A name that asks for something visible fits nothing else; one of an invisible
// item says nothing about it, and fits visible items too.
bool SceneCensus::isAlone(qsizetype position, const Positions &candidates, Range range) const
{
    const bool isVisible = m_entries[static_cast<std::size_t>(position)].isVisible;
    for (auto other = std::lower_bound(candidates.cbegin(), candidates.cend(), range.begin);
         other != candidates.cend() && *other < range.end; ++other) {
        if (*other != position && (!isVisible || m_entries[static_cast<std::size_t>(*other)].isVisible))
            return false;
    }
    return std::binary_search(candidates.cbegin(), candidates.cend(), position);
}

} // namespace Vantle::QtWrapper
