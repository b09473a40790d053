#pragma once

#include "wrappers/qt/extensions/qtquick/scenecensus_p.h"

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QString>

#include <optional>

namespace Vantle::QtWrapper {

/// What an item is to be called, besides its type and its visibility.
struct NameChoice
{
    QMap<QString, QString> texts;
    /// The item below which it is looked for; null for the window.
    QPointer<QQuickItem> container;
    /// Whether that leaves no other item.
    bool isUnique = false;
};

/// Chooses names that go on meaning the same item, out of what an item says
/// and what it is part of, in this order:
///
/// 1. object name, id, texts and what stands for them, each for itself
/// 2. for entries of views the number of the entry, below the view
/// 3. the type alone, of items whose type says something
/// 4. the same below an ancestor that has a good name itself
/// 5. all texts together
///
/// What is in a delegate is looked for below the delegate. Where all of that
/// leaves several items, the choice is the closest that there is.
///
/// Runs getters of the program and scripts of extensions, for which items may
/// be gone afterwards.
class NameChooser
{
public:
    explicit NameChooser(QQuickWindow *window) : m_census(window) {}

    const QQuickWindow *window() const { return m_census.window(); }
    /// \p item must be alive and in the window. \p container is where an
    /// extension wants it to be looked for, null if none does.
    NameChoice choose(QQuickItem *item, const QQuickItem *container);

private:
    using Range = SceneCensus::Range;
    /// A text that the item could be called by.
    struct Candidate
    {
        QString key;
        QString text;
        bool isAsked = false; ///< of extensions, which takes time for each item looked at
    };
    struct Subject;
    struct Known
    {
        NameChoice choice;
        int depth;
    };

    NameChoice chooseAt(qsizetype position, int depth);
    NameChoice chooseFor(Subject &subject);
    void findScope(Subject *subject);
    void limitAsking(Subject *subject);
    QList<Candidate> candidatesOf(qsizetype position, bool isEntry) const;
    std::optional<NameChoice> byText(Subject &subject);
    std::optional<NameChoice> byPlaceInView(Subject &subject);
    std::optional<NameChoice> byTypeAlone(Subject &subject);
    std::optional<NameChoice> belowNamedAncestor(Subject &subject);
    std::optional<NameChoice> byAllTexts(Subject &subject);
    std::optional<NameChoice> inSomeContainer(Subject &subject, const QMap<QString, QString> &texts);
    NameChoice closest(Subject &subject);
    QList<qsizetype> &namedAncestorsOf(Subject &subject);
    qsizetype narrowContainerOf(Subject &subject);
    bool isGoodContainer(qsizetype position, int depth);
    NameChoice choiceOf(const Subject &subject, const QMap<QString, QString> &texts, qsizetype container) const;

    SceneCensus m_census;
    QHash<qsizetype, Known> m_known;
};

} // namespace Vantle::QtWrapper
