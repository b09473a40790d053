#include "wrappers/qt/wrapping.h"

#include "hook/inspector.h"
#include "wrappers/qt/application.h"

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtCore/private/qobject_p.h>
#include <QtGui/QPixmap>

namespace Vantle::QtWrapper {

namespace {

class ObjectWrapper;

struct KnownClass
{
    QByteArray name;
    const Class *type = nullptr;
};

// Process-wide and never destroyed, since wrappers may die during exit.
struct Registry
{
    // By address. An entry whose native object has died stays until its
    // wrapper goes or another object takes the address.
    QHash<const QObject *, ObjectWrapper *> wrappers;
    // The QML engine may free the meta-objects that it makes, and reuse their
    // address, so an entry counts only while the names agree.
    QHash<const QMetaObject *, KnownClass> classes;
    QHash<const Class *, ChildrenFinder> childrenFinders;
};

Registry &registry()
{
    static auto *const theRegistry = new Registry;
    return *theRegistry;
}

class ObjectWrapper final : public Object
{
public:
    explicit ObjectWrapper(QObject *object)
        : m_key(object)
        , m_object(object)
        , m_class(classForMetaObject(object ? object->metaObject() : &QObject::staticMetaObject))
    {
    }

    ~ObjectWrapper() override
    {
        const auto entry = registry().wrappers.constFind(m_key);
        if (entry != registry().wrappers.constEnd() && *entry == this)
            registry().wrappers.erase(entry);
    }

    const Class *objectClass() const override { return m_class; }

    bool get(void **value) const override
    {
        *value = m_object.data();
        return !m_object.isNull();
    }

    QString scriptName() const override
    {
        Application *const application = Application::self();
        return application && m_object ? application->nameGenerator()->scriptName(self()) : QString();
    }

    ObjectList children() const override
    {
        if (!m_object)
            return {};
        for (const Class *type = m_class; type; type = type->super()) {
            if (const ChildrenFinder finder = registry().childrenFinders.value(type))
                return finder(m_object);
        }
        ObjectList list;
        const QObjectList children = m_object->children();
        for (QObject *child : children)
            list.push_back(wrapAndRegisterQObject(child));
        return list;
    }

private:
    SharedPtr<Object> self() const { return SharedPtr<Object>(const_cast<ObjectWrapper *>(this)); }

    const QObject *m_key;
    QPointer<QObject> m_object;
    const Class *m_class;
};

// Past this point of its destructor no guard on the object can be made: it
// would never learn that the object is gone.
bool isBeyondGuarding(QObject *object)
{
    return QObjectPrivate::get(object)->wasDeleted;
}

class PixmapValue final : public Object
{
public:
    explicit PixmapValue(const QPixmap &pixmap) : m_pixmap(pixmap) {}

    const Class *objectClass() const override { return pixmapClass(); }

    bool get(void **value) const override
    {
        *value = &m_pixmap;
        return true;
    }

    bool sameAs(const SharedPtr<Object> &other) const override
    {
        void *theirs = nullptr;
        return other && other->objectClass() == objectClass() && other->get(&theirs)
            && static_cast<const QPixmap *>(theirs)->cacheKey() == m_pixmap.cacheKey();
    }

private:
    mutable QPixmap m_pixmap;
};

} // namespace

SharedPtr<Object> wrapAndRegisterQObject(QObject *object)
{
    if (!object || isBeyondGuarding(object))
        return SharedPtr<Object>(new ObjectWrapper(nullptr));
    ObjectWrapper *&entry = registry().wrappers[object];
    if (!entry || entry->isNull())
        entry = new ObjectWrapper(object);
    return SharedPtr<Object>(entry);
}

const Class *classForMetaObject(const QMetaObject *metaObject)
{
    if (!metaObject)
        return nullptr;
    const char *const name = metaObject->className();
    const auto known = registry().classes.constFind(metaObject);
    if (known != registry().classes.constEnd() && known->name == name)
        return known->type;

    const Class *const super = classForMetaObject(metaObject->superClass());
    const QString text = QString::fromUtf8(name);
    const Class *type = Inspector::self()->classByName(text);
    if (!type || type->super() != super) {
        type = new Class(text, super);
        Inspector::self()->registerClass(type);
    }
    registry().classes.insert(metaObject, {name, type});
    return type;
}

QObject *nativeQObject(const SharedPtr<Object> &object)
{
    static const Class *const qobjectClass = classForMetaObject(&QObject::staticMetaObject);
    void *native = nullptr;
    if (!object || !object->isA(qobjectClass) || !object->get(&native))
        return nullptr;
    return static_cast<QObject *>(native);
}

const Class *pixmapClass()
{
    static const Class *const type = [] {
        auto *const made = new Class(QStringLiteral("QPixmap"), true);
        Inspector::self()->registerClass(made);
        return made;
    }();
    return type;
}

SharedPtr<Object> createResultObject(const QPixmap &pixmap)
{
    return SharedPtr<Object>(new PixmapValue(pixmap));
}

void registerChildrenFinder(const QMetaObject *metaObject, ChildrenFinder finder)
{
    registry().childrenFinders.insert(classForMetaObject(metaObject), finder);
}

} // namespace Vantle::QtWrapper
