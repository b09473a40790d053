#pragma once

#include "agent/recording/recordstage.h"
#include "hook/eventdata.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <functional>
#include <list>
#include <optional>

namespace Vantle::Agent {

/// Keeps account of the input that is on its way to becoming statements, so that
/// nothing is lost in silence.
///
/// Every statement bears the time of the input that it begins with. What had come
/// before that and has no statement of its own by then never will, and is told
/// as a remark; what has come since is pending. For what is pending the ledger
/// says which statements it would become if the program ended now.
///
/// The first stage of the line. Lives on the thread of the user interface.
class InputLedger final : public RecordStage
{
public:
    /// Says, in words, what became no statement and why.
    using Remark = std::function<void(const QString &text, const QtWrapper::SyntheticEvent &record)>;
    /// Gets what would still be written, whenever that has changed.
    using Outlook = std::function<void(const QList<EventData> &statements)>;

    /// \p dragDistance is in pixels.
    explicit InputLedger(int (*dragDistance)()) : m_dragDistance(dragDistance) {}

    /// Either may be empty.
    void setObservers(Remark remark, Outlook outlook);

    void take(const QtWrapper::SyntheticEvent &record) override;

    /// \p press is about to be delivered; it comes down the line once it has been.
    void foresee(const QtWrapper::SyntheticEvent &press);

    /// The object of the input that \p statement, which was not noted yet, begins
    /// with; null if that is not known.
    SharedPtr<Object> objectOf(const EventData &statement);

    /// A statement has been written.
    void noteStatement(const EventData &statement);

    /// The input that \p beginning stands for is written down by somebody else.
    void claim(const QtWrapper::SyntheticEvent &beginning);

    /// The recorder holds nothing any more: what has no statement gets none.
    void settle();

private:
    /// Input that a statement can begin with.
    struct Entry
    {
        QtWrapper::SyntheticEvent record;
        std::optional<QtWrapper::SyntheticEvent> end; ///< of a press or touch
        QString obstacle;                  ///< why nobody could act on the object
    };
    using Entries = std::list<Entry>;

    void noteEnd(const QtWrapper::SyntheticEvent &record);
    Entries::iterator entryOf(const EventData &statement);
    Entries::iterator endOf(const EventData &statement, Entries::iterator first);
    void remarkUpTo(Entries::iterator end);
    void tellOutlook();
    std::optional<EventData> outlookOf(const Entry &entry) const;

    int (*m_dragDistance)();
    Remark m_remark;
    Outlook m_outlook;
    Entries m_entries;
    std::optional<QtWrapper::SyntheticEvent> m_foreseen;
    bool m_hasOutlook = false;
};

} // namespace Vantle::Agent
