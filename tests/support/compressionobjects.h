#pragma once

#include "hook/object.h"
#include "hook/touchbuilder.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventcompressor.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/statementrecorder.h"

#include <QtCore/QByteArray>
#include <QtCore/QPoint>

#include <iosfwd>
#include <optional>
#include <vector>

/// Lets failures show texts as texts rather than as lists of bytes.
void PrintTo(const QByteArray &text, std::ostream *out);

namespace VantleTest {

/// The class of that name, which is made and registered at the first call.
/// \p super counts at that call only.
const Vantle::Class *classNamed(const char *name, const Vantle::Class *super = nullptr);

/// "QQuickItem", and a class that derives from it.
const Vantle::Class *itemClass();
const Vantle::Class *buttonClass();
/// A class that has nothing to do with items.
const Vantle::Class *widgetClass();

/// Something that events are recorded against. Its native object is itself,
/// unless it is a second wrapper of another one.
class TestObject : public Vantle::Object
{
public:
    /// \p origin is where the object's own coordinates begin on the screen.
    TestObject(const QByteArray &name, const Vantle::Class *type, QPoint origin = {});
    ~TestObject() override;

    const Vantle::Class *objectClass() const override { return m_type; }
    bool get(void **value) const override;
    QString scriptName() const override { return QString::fromUtf8(m_name); }

    const QByteArray &name() const noexcept { return m_name; }
    QPoint origin() const noexcept { return m_origin; }

    /// Makes this a wrapper of what \p other wraps. \p other must outlive it.
    void wrapSameAs(const TestObject *other) { m_native = other; }
    /// Makes this a wrapper of an object that is gone.
    void loseNative() { m_native = nullptr; }
    /// Lets what this wraps die, or live again, for all of its wrappers.
    void setAlive(bool isAlive) const;

private:
    QByteArray m_name;
    const Vantle::Class *m_type;
    QPoint m_origin;
    const TestObject *m_native;
    mutable bool m_isAlive = true; ///< as the native object of its wrappers
};

using TestObjectPtr = Vantle::SharedPtr<TestObject>;

TestObjectPtr makeObject(const QByteArray &name, const Vantle::Class *type, QPoint origin = {});

/// A call of StatementRecorder as a value.
struct Statement
{
    QByteArray method{};
    const Vantle::Object *object = nullptr;
    QByteArray objectName{};
    const Vantle::Class *objectClass = nullptr;
    QByteArray text{};
    std::vector<qint32> numbers{}; ///< coordinates, distances, states and delays, in the order of the call
    std::optional<Vantle::MouseButton::Value> button{};
    std::optional<Vantle::Modifier::Value> modifiers{};
    bool isLong = false;
    std::optional<Vantle::TouchBuilder::MultiTouchInfo> gesture{};
    quint64 timestamp = 0;

    bool operator==(const Statement &) const = default;

    /// As one line, such as `mouseClick button (QQuickItem) 10/20 LeftButton [Shift] @1000`.
    QByteArray toText() const;
};

/// Keeps what patterns write. The statements that it hands on carry their
/// place in `written` as the object's name.
class StatementSink : public Vantle::QtWrapper::StatementRecorder
{
public:
    ~StatementSink() override;

    void type(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName, const QByteArray &text,
              quint64 timestamp) override;
    void mouseClick(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName,
                    const Vantle::Class *objectClass, qint32 x, qint32 y, Vantle::MouseButton::Value button,
                    Vantle::Modifier::Value modifiers, quint64 timestamp, bool longClick) override;
    void mouseDrag(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName, qint32 x, qint32 y,
                   qint32 dx, qint32 dy, Vantle::MouseButton::Value button, Vantle::Modifier::Value modifiers,
                   quint64 timestamp, bool longDrag) override;
    void mouseWheel(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName, qint32 x, qint32 y,
                    qint32 deltaX, qint32 deltaY, Vantle::Modifier::Value modifiers, quint64 timestamp) override;
    void doubleClick(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName,
                     const Vantle::Class *objectClass, qint32 x, qint32 y, Vantle::MouseButton::Value button,
                     Vantle::Modifier::Value modifiers, quint64 timestamp) override;
    void flick(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName, qint32 dx, qint32 dy,
               quint64 timestamp) override;
    void closeWindow(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName,
                     quint64 timestamp) override;
    void moveWindow(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName, qint32 dx, qint32 dy,
                    quint64 timestamp) override;
    void setWindowSize(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName, qint32 width,
                       qint32 height, quint64 timestamp) override;
    void setWindowState(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName, qint32 state,
                        quint64 timestamp) override;
    void tapObject(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName,
                   const Vantle::Class *objectClass, qint32 x, qint32 y, Vantle::Modifier::Value modifiers,
                   quint64 timestamp) override;
    void touchAndDrag(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName, qint32 x, qint32 y,
                      qint32 dx, qint32 dy, Vantle::Modifier::Value modifiers, qint32 delay,
                      quint64 timestamp) override;
    void doubleTap(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName,
                   const Vantle::Class *objectClass, qint32 x, qint32 y, Vantle::Modifier::Value modifiers,
                   quint64 timestamp) override;
    void gesture(Vantle::SharedPtr<Vantle::Object> object, const QByteArray &objectName,
                 const Vantle::TouchBuilder::MultiTouchInfo &info, Vantle::Modifier::Value modifiers,
                 quint64 timestamp) override;

    std::vector<Statement> written;

private:
    void add(Statement statement);
};

} // namespace VantleTest
