#pragma once

namespace Vantle::QtWrapper {
struct SyntheticEvent;
}

namespace Vantle::Agent {

/// A stage on the way of an input record from the watcher to the recorder.
///
/// Stages stand in one line, which the watcher puts together. Each one takes a
/// record and passes it on, keeps it back, drops it or adds one; it knows
/// nothing of the others. All of them live on the thread of the user interface.
class RecordStage
{
public:
    RecordStage() = default;
    virtual ~RecordStage() = default;

    /// Where records go from here; \p next must outlive this stage. Null, as at
    /// first, drops them.
    void setNext(RecordStage *next) { m_next = next; }

    virtual void take(const QtWrapper::SyntheticEvent &record) = 0;

    /// Passes on all that is kept back, since what comes next begins something
    /// new. By default nothing is.
    virtual void letGo() {}

protected:
    void pass(const QtWrapper::SyntheticEvent &record) const
    {
        if (m_next)
            m_next->take(record);
    }

private:
    RecordStage(const RecordStage &) = delete;
    RecordStage &operator=(const RecordStage &) = delete;

    RecordStage *m_next = nullptr;
};

} // namespace Vantle::Agent
