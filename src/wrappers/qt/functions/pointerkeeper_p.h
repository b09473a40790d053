#pragma once

#include <QtCore/QEvent>
#include <QtCore/QObject>

namespace Vantle::QtWrapper {

/// Keeps the mouse of the window system from disturbing that of scripts.
///
/// There is one mouse for Qt, but two hands: the window system goes on telling
/// windows that its pointer comes and goes, as windows open and close below it
/// where it happens to rest. A window would believe that the mouse has left, and
/// what shows for as long as it hovers would close.
///
/// From the first event of a script's mouse on such news is kept from the
/// program, until somebody moves the real mouse: then it is theirs again.
class PointerKeeper final : public QObject
{
    Q_OBJECT

public:
    /// Marks, for as long as it lives, mouse events as those of scripts.
    class OwnEvent
    {
    public:
        explicit OwnEvent(PointerKeeper *keeper) : m_keeper(keeper) { ++m_keeper->m_ownEvents; }
        ~OwnEvent() { --m_keeper->m_ownEvents; }

    private:
        Q_DISABLE_COPY_MOVE(OwnEvent)

        PointerKeeper *m_keeper;
    };

    /// The mouse is a script's from now on.
    void take();
    /// The next event of \p type, Enter or Leave, that a window gets is a script's.
    void expect(QEvent::Type type) { m_expected = type; }

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    bool isForeignMouse(const QEvent &event) const;

    bool m_hasMouse = false;
    int m_ownEvents = 0;
    QEvent::Type m_expected = QEvent::None;
};

} // namespace Vantle::QtWrapper
