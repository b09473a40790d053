#pragma once

#include "wrappers/qt/extensions/qtquickcommon/compression/statementrecorder.h"

#include <QtCore/QList>

namespace Vantle {
class Method;
}

namespace Vantle::QtWrapper {

/// Writes statements down as calls of the interaction functions: picks the
/// overload that fits, makes its arguments, and settles the object's name.
///
/// Nothing is refused. Buttons and modifiers are written in Qt's values.
class QtStatementRecorder final : public StatementRecorder
{
public:
    QtStatementRecorder();
    ~QtStatementRecorder() override;

    /// Clicks and taps on objects of the classes in \p classNames, and of
    /// classes derived from them, are recorded without coordinates. Raw names
    /// and names without what the QML engine adds to them both count.
    void setClassesWithoutCoordinates(const QList<QByteArray> &classNames);

    void type(SharedPtr<Object> object, const QByteArray &objectName, const QByteArray &text,
              quint64 timestamp) override;
    void mouseClick(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass, qint32 x,
                    qint32 y, MouseButton::Value button, Modifier::Value modifiers, quint64 timestamp,
                    bool longClick) override;
    void mouseDrag(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y, qint32 dx, qint32 dy,
                   MouseButton::Value button, Modifier::Value modifiers, quint64 timestamp, bool longDrag) override;
    void mouseWheel(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y, qint32 deltaX,
                    qint32 deltaY, Modifier::Value modifiers, quint64 timestamp) override;
    void doubleClick(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass, qint32 x,
                     qint32 y, MouseButton::Value button, Modifier::Value modifiers, quint64 timestamp) override;
    void flick(SharedPtr<Object> object, const QByteArray &objectName, qint32 dx, qint32 dy,
               quint64 timestamp) override;
    void closeWindow(SharedPtr<Object> object, const QByteArray &objectName, quint64 timestamp) override;
    void moveWindow(SharedPtr<Object> object, const QByteArray &objectName, qint32 dx, qint32 dy,
                    quint64 timestamp) override;
    void setWindowSize(SharedPtr<Object> object, const QByteArray &objectName, qint32 width, qint32 height,
                       quint64 timestamp) override;
    void setWindowState(SharedPtr<Object> object, const QByteArray &objectName, qint32 state,
                        quint64 timestamp) override;
    void tapObject(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass, qint32 x, qint32 y,
                   Modifier::Value modifiers, quint64 timestamp) override;
    void touchAndDrag(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y, qint32 dx, qint32 dy,
                      Modifier::Value modifiers, qint32 delay, quint64 timestamp) override;
    void doubleTap(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass, qint32 x, qint32 y,
                   Modifier::Value modifiers, quint64 timestamp) override;
    /// The modifiers are not written: the statement has no place for them.
    void gesture(SharedPtr<Object> object, const QByteArray &objectName, const TouchBuilder::MultiTouchInfo &info,
                 Modifier::Value modifiers, quint64 timestamp) override;

private:
    Q_DISABLE_COPY_MOVE(QtStatementRecorder)

    /// The four overloads of a function for clicks.
    struct ClickMethods
    {
        const Method *plain;                   ///< the object alone
        const Method *buttonAndModifiers;      ///< no coordinates
        const Method *coordinates;             ///< and the button
        const Method *coordinatesAndModifiers; ///< and the button
    };
    void appendClick(const ClickMethods &methods, const SharedPtr<Object> &object, const QByteArray &objectName,
                     const Class *objectClass, qint32 x, qint32 y, MouseButton::Value button, Modifier::Value modifiers,
                     quint64 timestamp);

    /// The four overloads of a function for taps.
    struct TapMethods
    {
        const Method *plain; ///< the object alone
        const Method *modifiers;
        const Method *coordinates;
        const Method *coordinatesAndModifiers;
    };
    void appendTap(const TapMethods &methods, const SharedPtr<Object> &object, const QByteArray &objectName,
                   const Class *objectClass, qint32 x, qint32 y, Modifier::Value modifiers, quint64 timestamp);

    bool isRecordedWithoutCoordinates(const Class *objectClass) const;
    void appendStatement(const Method *method, const SharedPtr<Object> &object, const QByteArray &objectName,
                         const ObjectList &arguments, quint64 timestamp);

    QList<QByteArray> classesWithoutCoordinates;
};

} // namespace Vantle::QtWrapper
