#include "wrappers/qt/wrapping.h"

#include "hook/class.h"
#include "hook/inspector.h"
#include "wrappers/qt/application.h"

#include <gtest/gtest.h>

#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtGui/QWindow>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

#include <memory>
#include <new>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

/// Room in which one object after the other is made, all at one address.
class OneAddress
{
public:
    OneAddress() = default;
    ~OneAddress() { clear(); }
    Q_DISABLE_COPY_MOVE(OneAddress)

    template<typename T>
    T *make()
    {
        static_assert(sizeof(T) <= sizeof(m_room) && alignof(T) <= alignof(std::max_align_t));
        clear();
        T *const object = new (m_room) T;
        m_object = object;
        return object;
    }
    void clear()
    {
        if (QObject *const object = std::exchange(m_object, nullptr))
            object->~QObject();
    }

private:
    alignas(std::max_align_t) std::byte m_room[256];
    QObject *m_object = nullptr;
};

/// Calls back when it has become a mere QObject with its destructor still running.
class Dying : public QObject
{
public:
    explicit Dying(SharedPtr<Object> *wrapper) : m_wrapper(wrapper) {}
    ~Dying() override { *m_wrapper = wrapAndRegisterQObject(this); }

private:
    SharedPtr<Object> *m_wrapper;
};

QList<QObject *> nativeChildren(const SharedPtr<Object> &object)
{
    QList<QObject *> natives;
    for (const SharedPtr<Object> &child : object->children())
        natives.append(nativeQObject(child));
    return natives;
}

std::unique_ptr<QObject> createQml(QQmlEngine *engine, const QByteArray &text)
{
    QQmlComponent component(engine);
    component.setData(text, QUrl());
    std::unique_ptr<QObject> object(component.create());
    EXPECT_TRUE(object) << qPrintable(component.errorString());
    return object;
}

} // namespace

TEST(Wrapping, GivesTheSameWrapperWhileOneIsHeld)
{
    QObject object;
    const SharedPtr<Object> first = wrapAndRegisterQObject(&object);
    EXPECT_EQ(wrapAndRegisterQObject(&object), first);
    EXPECT_EQ(first->referenceCount(), 1);
}

TEST(Wrapping, GivesEachObjectItsOwnWrapper)
{
    QObject one;
    QObject other;
    EXPECT_FALSE(wrapAndRegisterQObject(&one) == wrapAndRegisterQObject(&other));
}

TEST(Wrapping, LetsGoOfAWrapperThatNobodyHolds)
{
    QObject object;
    for (int i = 0; i < 3; ++i) {
        const SharedPtr<Object> wrapper = wrapAndRegisterQObject(&object);
        EXPECT_EQ(wrapper->referenceCount(), 1);
        EXPECT_EQ(nativeQObject(wrapper), &object);
    }
}

TEST(Wrapping, NullGivesAWrapperOnWhichEverythingIsSafe)
{
    const SharedPtr<Object> wrapper = wrapAndRegisterQObject(nullptr);
    ASSERT_TRUE(wrapper);
    EXPECT_TRUE(wrapper->isNull());
    void *native = &native;
    EXPECT_FALSE(wrapper->get(&native));
    EXPECT_EQ(native, nullptr);
    ASSERT_TRUE(wrapper->objectClass());
    EXPECT_EQ(wrapper->className(), QStringLiteral("QObject"));
    EXPECT_EQ(wrapper->children().size(), 0U);
    EXPECT_EQ(wrapper->scriptName(), QString());
    EXPECT_FALSE(wrapper->sameAs(nullptr));
    EXPECT_FALSE(wrapper->sameAs(wrapAndRegisterQObject(nullptr)));
    EXPECT_EQ(nativeQObject(wrapper), nullptr);
}

TEST(Wrapping, WrapperOutlivesItsObject)
{
    const Application application;
    auto window = std::make_unique<QWindow>();
    const SharedPtr<Object> wrapper = wrapAndRegisterQObject(window.get());
    EXPECT_FALSE(wrapper->isNull());
    EXPECT_NE(wrapper->scriptName(), QString());

    window.reset();
    EXPECT_TRUE(wrapper->isNull());
    void *native = &native;
    EXPECT_FALSE(wrapper->get(&native));
    EXPECT_EQ(native, nullptr);
    EXPECT_EQ(wrapper->className(), QStringLiteral("QWindow"));
    EXPECT_EQ(wrapper->children().size(), 0U);
    EXPECT_EQ(wrapper->scriptName(), QString());
    EXPECT_EQ(nativeQObject(wrapper), nullptr);
}

TEST(Wrapping, WithoutApplicationThereAreNoNames)
{
    ASSERT_EQ(Application::self(), nullptr);
    QWindow window;
    EXPECT_EQ(wrapAndRegisterQObject(&window)->scriptName(), QString());
}

TEST(Wrapping, NewObjectAtADeadOnesAddressGetsItsOwnWrapper)
{
    OneAddress address;
    const SharedPtr<Object> dead = wrapAndRegisterQObject(address.make<QObject>());
    QTimer *const successor = address.make<QTimer>();

    const SharedPtr<Object> living = wrapAndRegisterQObject(successor);
    EXPECT_FALSE(living == dead);
    EXPECT_TRUE(dead->isNull());
    EXPECT_FALSE(living->isNull());
    EXPECT_EQ(dead->className(), QStringLiteral("QObject"));
    EXPECT_EQ(living->className(), QStringLiteral("QTimer"));
    EXPECT_FALSE(living->sameAs(dead));
    EXPECT_FALSE(dead->sameAs(living));
}

TEST(Wrapping, LateEndOfADeadOnesWrapperLeavesTheSuccessorRegistered)
{
    OneAddress address;
    SharedPtr<Object> dead = wrapAndRegisterQObject(address.make<QObject>());
    QObject *const successor = address.make<QObject>();
    const SharedPtr<Object> living = wrapAndRegisterQObject(successor);
    dead = nullptr;
    EXPECT_EQ(wrapAndRegisterQObject(successor), living);
}

TEST(Wrapping, EarlyEndOfADeadOnesWrapperLeavesRoomForTheSuccessor)
{
    OneAddress address;
    SharedPtr<Object> dead = wrapAndRegisterQObject(address.make<QObject>());
    QObject *const successor = address.make<QObject>();
    dead = nullptr;
    const SharedPtr<Object> living = wrapAndRegisterQObject(successor);
    EXPECT_EQ(nativeQObject(living), successor);
    EXPECT_EQ(wrapAndRegisterQObject(successor), living);
}

TEST(Wrapping, ObjectThatEmitsDestroyedCountsAsDead)
{
    SharedPtr<Object> wrapper;
    {
        QObject object;
        QObject::connect(&object, &QObject::destroyed,
                         [&wrapper](QObject *gone) { wrapper = wrapAndRegisterQObject(gone); });
    }
    ASSERT_TRUE(wrapper);
    EXPECT_TRUE(wrapper->isNull());
}

TEST(Wrapping, WrapperMadeInADestructorIsDeadAfterIt)
{
    SharedPtr<Object> wrapper;
    {
        const Dying object(&wrapper);
    }
    ASSERT_TRUE(wrapper);
    EXPECT_TRUE(wrapper->isNull());
    EXPECT_EQ(nativeQObject(wrapper), nullptr);
}

TEST(Wrapping, SameAsTellsObjectsApart)
{
    QObject one;
    QObject other;
    const SharedPtr<Object> wrapper = wrapAndRegisterQObject(&one);
    EXPECT_TRUE(wrapper->sameAs(wrapper));
    EXPECT_TRUE(wrapper->sameAs(wrapAndRegisterQObject(&one)));
    EXPECT_FALSE(wrapper->sameAs(wrapAndRegisterQObject(&other)));
    EXPECT_FALSE(wrapper->sameAs(wrapAndRegisterQObject(nullptr)));
    EXPECT_FALSE(wrapper->sameAs(nullptr));
    EXPECT_FALSE(wrapper->sameAs(Inspector::self()->createInteger(1)));
}

TEST(Wrapping, NativeObjectOfWhatIsNoQObjectIsNull)
{
    EXPECT_EQ(nativeQObject(nullptr), nullptr);
    EXPECT_EQ(nativeQObject(Inspector::self()->createInteger(4711)), nullptr);
    EXPECT_EQ(nativeQObject(Inspector::self()->voidResult()), nullptr);
}

TEST(Classes, FollowTheMetaObjects)
{
    const Class *const type = classForMetaObject(&QTimer::staticMetaObject);
    ASSERT_TRUE(type);
    EXPECT_EQ(type->className(), QStringLiteral("QTimer"));
    ASSERT_TRUE(type->super());
    EXPECT_EQ(type->super()->className(), QStringLiteral("QObject"));
    EXPECT_EQ(type->super()->super(), nullptr);
    EXPECT_EQ(classForMetaObject(nullptr), nullptr);
}

TEST(Classes, AreMadeOnceAndFoundByName)
{
    const Class *const type = classForMetaObject(&QTimer::staticMetaObject);
    EXPECT_EQ(classForMetaObject(&QTimer::staticMetaObject), type);
    EXPECT_EQ(Inspector::self()->classByName(QStringLiteral("QTimer")), type);
    QTimer timer;
    EXPECT_EQ(wrapAndRegisterQObject(&timer)->objectClass(), type);
    EXPECT_TRUE(wrapAndRegisterQObject(&timer)->isA(classForMetaObject(&QObject::staticMetaObject)));
}

TEST(Classes, OtherMetaObjectAtAnOldOnesAddressIsNoticed)
{
    QMetaObject metaObject = QTimer::staticMetaObject;
    EXPECT_EQ(classForMetaObject(&metaObject), classForMetaObject(&QTimer::staticMetaObject));
    metaObject = QWindow::staticMetaObject;
    EXPECT_EQ(classForMetaObject(&metaObject), classForMetaObject(&QWindow::staticMetaObject));
}

TEST(Classes, OfOneNameWithOtherBaseClassesAreKeptApart)
{
    const Class *const timer = classForMetaObject(&QTimer::staticMetaObject);
    QMetaObject impostor = QTimer::staticMetaObject;
    impostor.d.superdata = &QWindow::staticMetaObject;

    const Class *const type = classForMetaObject(&impostor);
    EXPECT_NE(type, timer);
    EXPECT_EQ(type->className(), QStringLiteral("QTimer"));
    EXPECT_EQ(type->super(), classForMetaObject(&QWindow::staticMetaObject));
    EXPECT_EQ(classForMetaObject(&impostor), type);
    EXPECT_EQ(Inspector::self()->classByName(QStringLiteral("QTimer")), timer);
}

TEST(Classes, TypesThatQmlGeneratesDeriveFromTheirCppClass)
{
    QQmlEngine engine;
    const auto object = createQml(&engine, "import QtQuick\nItem { property int count: 1 }");
    const SharedPtr<Object> wrapper = wrapAndRegisterQObject(object.get());
    EXPECT_EQ(wrapper->className(), QString::fromUtf8(object->metaObject()->className()));
    EXPECT_NE(wrapper->className(), QStringLiteral("QQuickItem"));
    EXPECT_TRUE(wrapper->isA(classForMetaObject(&QQuickItem::staticMetaObject)));
    EXPECT_EQ(wrapper->objectClass()->super(), classForMetaObject(&QQuickItem::staticMetaObject));
}

TEST(Classes, SurviveTheEngineThatMadeThem)
{
    SharedPtr<Object> wrapper;
    QString name;
    {
        QQmlEngine engine;
        const auto object = createQml(&engine, "import QtQuick\nItem { property int count: 1 }");
        wrapper = wrapAndRegisterQObject(object.get());
        name = QString::fromUtf8(object->metaObject()->className());
    }
    EXPECT_TRUE(wrapper->isNull());
    EXPECT_EQ(wrapper->className(), name);
    EXPECT_EQ(wrapper->objectClass()->super(), classForMetaObject(&QQuickItem::staticMetaObject));
}

TEST(Classes, OfEnginesMadeOneAfterTheOtherNeverMixUp)
{
    const QByteArray documents[] = {
        "import QtQuick\nItem { property int count: 1 }",
        "import QtQuick\nText { property int count: 1 }",
        "import QtQuick\nimport QtQml\nQtObject { property int count: 1 }",
    };
    for (int round = 0; round < 30; ++round) {
        QQmlEngine engine;
        const auto object = createQml(&engine, documents[round % 3]);
        ASSERT_TRUE(object);
        const SharedPtr<Object> wrapper = wrapAndRegisterQObject(object.get());
        ASSERT_EQ(wrapper->className(), QString::fromUtf8(object->metaObject()->className()));
        ASSERT_EQ(wrapper->objectClass()->super(), classForMetaObject(object->metaObject()->superClass()));
    }
}

TEST(Children, OfAnObjectAreThoseItOwns)
{
    QObject parent;
    auto *const first = new QObject(&parent);
    auto *const second = new QTimer(&parent);
    new QObject(first);
    EXPECT_EQ(nativeChildren(wrapAndRegisterQObject(&parent)), (QList<QObject *>{first, second}));
}

TEST(Children, OfAPlainWindowAreTheWindowsInIt)
{
    const Application application;
    QWindow window;
    new QObject(&window);
    auto *const inner = new QWindow(&window);
    new QTimer(&window);
    EXPECT_EQ(nativeChildren(wrapAndRegisterQObject(&window)), (QList<QObject *>{inner}));
}

namespace {

class Tree : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
};

class Branch : public Tree
{
    Q_OBJECT
public:
    using Tree::Tree;
};

ObjectList justItself(QObject *object)
{
    return {wrapAndRegisterQObject(object)};
}

ObjectList nobody(QObject *)
{
    return {};
}

} // namespace

TEST(Children, AreFoundByTheNearestClassThatHasAFinder)
{
    Tree tree;
    Branch branch;
    new QObject(&tree);
    auto *const leaf = new QObject(&branch);
    EXPECT_EQ(nativeChildren(wrapAndRegisterQObject(&branch)), (QList<QObject *>{leaf}));

    registerChildrenFinder(&Tree::staticMetaObject, justItself);
    EXPECT_EQ(nativeChildren(wrapAndRegisterQObject(&tree)), (QList<QObject *>{&tree}));
    EXPECT_EQ(nativeChildren(wrapAndRegisterQObject(&branch)), (QList<QObject *>{&branch}));

    registerChildrenFinder(&Branch::staticMetaObject, nobody);
    EXPECT_EQ(nativeChildren(wrapAndRegisterQObject(&tree)), (QList<QObject *>{&tree}));
    EXPECT_EQ(nativeChildren(wrapAndRegisterQObject(&branch)), QList<QObject *>());
}

#include "tst_wrapping.moc"
