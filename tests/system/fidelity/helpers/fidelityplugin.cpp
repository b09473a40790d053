// A QML module for scenes: ends of programs that QML has no word for, and a
// model that is a tree.

#include <QAbstractItemModel>
#include <QQmlExtensionPlugin>
#include <QStandardItemModel>
#include <QtQml>

#include <csignal>
#include <unistd.h>

namespace {

/// Ends of a program without any farewell.
class Ending : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// As an access to memory that isn't there does.
    Q_INVOKABLE void crash() const { ::raise(SIGSEGV); }

    /// Without destructors, handlers and flushes.
    Q_INVOKABLE void exitAtOnce(int code) const { ::_exit(code); }

    /// As a failed assertion does.
    Q_INVOKABLE void abort() const { ::abort(); }
};

/// Three levels of five entries each, by names like "2.4.1".
class Forest : public QStandardItemModel
{
    Q_OBJECT

public:
    explicit Forest(QObject *parent = nullptr)
        : QStandardItemModel(parent)
    {
        grow(invisibleRootItem(), QString(), 3);
    }

private:
    static void grow(QStandardItem *parent, const QString &prefix, int levels)
    {
        for (int i = 1; i <= 5; ++i) {
            const QString name = prefix + QString::number(i);
            auto *item = new QStandardItem(name);
            parent->appendRow(item);
            if (levels > 1)
                grow(item, name + u'.', levels - 1);
        }
    }
};

} // namespace

class FidelityPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char *uri) override
    {
        qmlRegisterType<Ending>(uri, 1, 0, "Ending");
        qmlRegisterType<Forest>(uri, 1, 0, "Forest");
    }
};

#include "fidelityplugin.moc"
