#pragma once

#include "agent/recording/recordstage.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <vector>

namespace Vantle::Agent {

/// Makes one text of what is typed in one go.
///
/// The patterns take a character outside of ASCII for a key with a name, and
/// give it a statement of its own; a text that an input method commits they take
/// as it is. So letters that are typed one behind the other, and commits, are
/// kept back until something else happens. A run of ASCII letters is then passed
/// on as it came; any other one as a commit of the whole text.
class TextRuns final : public RecordStage
{
public:
    void take(const QtWrapper::SyntheticEvent &record) override;
    void letGo() override;

    /// Whether a text is kept back.
    bool isHolding() const { return !m_run.empty(); }

private:
    bool belongsToRun(const QtWrapper::SyntheticEvent &record) const;

    std::vector<QtWrapper::SyntheticEvent> m_run;
};

} // namespace Vantle::Agent
