#pragma once

#include "hook/object.h"

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QString>

#include <memory>

namespace Vantle {

class Class;

/// What the tool can ask about the objects of a class without knowing the
/// toolkit. Delegates hold no state and live as long as the process; every
/// operation is safe for null and dead objects.
class VANTLEHOOK_EXPORT Delegate
{
public:
    enum Type : qint32 {
        GeometryDelegate = 7,
        InteractionDelegate = 8,
    };

    virtual ~Delegate();
};

/// Where things are. All coordinates are logical pixels.
class VANTLEHOOK_EXPORT GeometryDelegate : public Delegate
{
public:
    /// The screen point (\p x, \p y) in the object's own coordinates.
    virtual QPoint mapFromGlobal(const SharedPtr<Object> &object, int x, int y) const = 0;
    /// The child at a point in the object's own coordinates, null if there is none.
    virtual SharedPtr<Object> childAt(const SharedPtr<Object> &object, int x, int y) const = 0;
    /// The child that holds the keyboard focus, null if there is none.
    virtual SharedPtr<Object> focusChild(const SharedPtr<Object> &object) const = 0;
    /// The object's rectangle in screen coordinates; width and height are -1
    /// for an object that has no place on the screen.
    virtual QRect screenRect(const SharedPtr<Object> &object) const = 0;

    /// A window and a point in its coordinates.
    struct WindowPoint
    {
        SharedPtr<Object> window;
        QPointF point;
    };
    /// Where \p point, in the object's own coordinates, is in the window in
    /// which the user sees the object. Without a window, which is what classes
    /// get that don't say otherwise, nobody can point at the object.
    virtual WindowPoint mapToWindow(const SharedPtr<Object> &object, QPointF point) const;
};

/// Whether things can be acted on.
class VANTLEHOOK_EXPORT InteractionDelegate : public Delegate
{
public:
    /// Why a user could not act on the object now, in words; empty when one could.
    virtual QString notReadyReason(const SharedPtr<Object> &object) const = 0;
    /// What takes the input that a user means for the object, if that is why one
    /// could not act on it now: something modal. Null if it isn't, and for
    /// classes that don't say otherwise.
    virtual SharedPtr<Object> blocker(const SharedPtr<Object> &object) const;
    /// Makes the object, or what is below it, the one that typed text goes to,
    /// if it isn't yet. Runs code of the program. Does nothing for classes that
    /// don't say otherwise.
    virtual void takeFocus(const SharedPtr<Object> &object) const;
};

/// The delegates by class. A class without a delegate of its own has that of
/// its nearest base class. Belongs to the thread that owns the user interface.
class VANTLEHOOK_EXPORT DelegateFactory
{
public:
    static DelegateFactory *self();

    /// The delegate of kind \p kind for \p type, null if there is none or \p type is null.
    const Delegate *delegate(const Class *type, Delegate::Type kind) const;
    /// Same, for callers that know the interface behind the kind.
    const GeometryDelegate *geometryDelegate(const Class *type) const;
    const InteractionDelegate *interactionDelegate(const Class *type) const;

    /// Makes \p delegate answer for \p type, in place of any earlier one, which
    /// stays valid for callers that hold it. A null \p delegate leaves the class
    /// to its base classes again; a null \p type does nothing.
    void registerDelegate(const Class *type, std::unique_ptr<GeometryDelegate> delegate);
    void registerDelegate(const Class *type, std::unique_ptr<InteractionDelegate> delegate);

private:
    DelegateFactory();
    ~DelegateFactory();
    Q_DISABLE_COPY_MOVE(DelegateFactory)

    struct Registry;
    std::unique_ptr<Registry> m_registry;
};

} // namespace Vantle
