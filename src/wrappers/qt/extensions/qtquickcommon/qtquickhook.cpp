#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"

#include "wrappers/qt/extensions/qtquickcommon/diagnostics/tracing.h"
#include "wrappers/qt/extensions/qtquickcommon/extensionloader_p.h"
#include "wrappers/qt/extensions/qtquickcommon/hookdispatch_p.h"
#include "wrappers/qt/extensions/qtquickcommon/scriptvalues_p.h"

#include <algorithm>
#include <iterator>
#include <optional>

using namespace Vantle::QtWrapper;

namespace VantleQtQuickHook {

namespace {

using Hook = QPointer<VantleHook>;
using Item = QPointer<QQuickItem>;

/// The hooks of the item's window in the order in which they are asked.
///
/// A list of their own, since a hook's script may do anything: destroy hooks,
/// the item or the window, or have another window hooked up. So each question
/// below asks after every step that may run script what is still there.
QList<Hook> hooksToAsk(const Item &item)
{
    const auto entry = hooksForItem(item);
    if (entry == hooksByWindow.cend())
        return {};
    QList<Hook> hooks;
    for (auto priority = entry->cend(); priority != entry->cbegin();) {
        --priority;
        hooks += priority.value();
    }
    return hooks;
}

/// The hook's own list of that name; empty if it has none.
QStringList listOf(const Hook &hook, const char *name)
{
    const StrayScriptErrors strayErrors(hook.data());
    return toStringList(hook->property(name));
}

/// For traces. A hook may have destroyed itself with its answer.
const char *classOf(const Hook &hook)
{
    return hook ? hook->metaObject()->className() : VantleHook::staticMetaObject.className();
}

QQuickItem *nearestAncestorOfType(const QQuickItem *item, const QStringList &types)
{
    if (types.isEmpty())
        return nullptr;
    for (QQuickItem *ancestor = item->parentItem(); ancestor; ancestor = ancestor->parentItem()) {
        if (itemMatchesAnyType(ancestor, types))
            return ancestor;
    }
    return nullptr;
}

QQuickItem *toQuickItem(const QVariant &value)
{
    auto *const object = qvariant_cast<QObject *>(value);
    return object && object->isQuickItemType() ? static_cast<QQuickItem *>(object) : nullptr;
}

/// What the hook lists for the first type, in ascending order of their names,
/// that \p item is of.
std::optional<QStringList> propertiesListedFor(const Item &item, const Hook &hook)
{
    const StrayScriptErrors strayErrors(hook.data());
    const QMap<QString, QVariant> listsByType = toMap(hook->property("objectNameProperties"), strayErrors.engine());
    if (!item)
        return std::nullopt;
    for (auto list = listsByType.cbegin(); list != listsByType.cend(); ++list) {
        if (objectIsOfType(item, list.key()))
            return toStringList(list.value());
    }
    return std::nullopt;
}

/// What the hook's function would have added; nothing if it gives no answer.
std::optional<QStringList> propertiesAddedFor(const QVariant &item, const Hook &hook)
{
    const StrayScriptErrors strayErrors(hook.data());
    const QVariant answer = callHookFunction(hook, "extraPropertiesFor", item, nullptr);
    if (!answer.isValid())
        return std::nullopt;
    QStringList added = toStringList(answer);
    added.removeIf([](const QString &property) { return !acceptExtensionProperty(property); });
    return added;
}

} // namespace

QQuickItem *containerFor(QQuickItem *item)
{
    const Item guard(item);
    const QVariant argument = QVariant::fromValue(item);
    for (const Hook &hook : hooksToAsk(guard)) {
        if (!hook || !guard)
            continue;
        const QStringList types = listOf(hook, "containerTypes");
        if (!hook || !guard)
            continue;
        if (QQuickItem *const container = nearestAncestorOfType(guard, types)) {
            VANTLE_TRACE("Got container " << container << " from " << classOf(hook) << ".containerTypes");
            return container;
        }

        const QVariant answer = callHookFunction(hook, "containerFor", argument, nullptr);
        if (answer.isValid()) {
            QQuickItem *const container = toQuickItem(answer);
            VANTLE_TRACE("Got container " << container << " from " << classOf(hook) << ".containerFor()");
            return container;
        }
    }
    return nullptr;
}

bool extraPropertiesFor(QQuickItem *item, QList<QString> *properties)
{
    const Item guard(item);
    const QVariant argument = QVariant::fromValue(item);
    for (const Hook &hook : hooksToAsk(guard)) {
        if (!hook || !guard)
            continue;
        if (const std::optional<QStringList> listed = propertiesListedFor(guard, hook)) {
            *properties = *listed;
            VANTLE_TRACE("Got properties " << *properties << " from " << classOf(hook) << ".objectNameProperties");
            return true;
        }

        if (!hook || !guard)
            continue;
        if (const std::optional<QStringList> added = propertiesAddedFor(argument, hook)) {
            *properties += *added;
            VANTLE_TRACE("Got properties " << *properties << " from " << classOf(hook) << ".extraPropertiesFor()");
            return true;
        }
    }
    return false;
}

bool propertyFor(QQuickItem *item, const QString &name, QString *value)
{
    const Item guard(item);
    const QVariant argument = QVariant::fromValue(item);
    const QVariant nameArgument(name);
    for (const Hook &hook : hooksToAsk(guard)) {
        if (!hook || !guard)
            continue;
        const QVariant answer = callHookFunction(hook, "propertyFor", argument, &nameArgument);
        if (answer.isValid()) {
            *value = answer.toString();
            VANTLE_TRACE("Got '" << name << "'='" << *value << "' from " << classOf(hook) << ".propertyFor()");
            return true;
        }
    }
    return false;
}

bool isIgnored(QQuickItem *item, bool *ignored)
{
    const Item guard(item);
    const QVariant argument = QVariant::fromValue(item);
    for (const Hook &hook : hooksToAsk(guard)) {
        if (!hook || !guard)
            continue;
        const QStringList whitelist = listOf(hook, "whitelistedTypes");
        if (!hook || !guard)
            continue;
        if (itemMatchesAnyType(guard, whitelist)) {
            *ignored = false;
            VANTLE_TRACE(guard << " not ignored due to " << classOf(hook) << ".whitelistedTypes");
            return true;
        }

        const QStringList blacklist = listOf(hook, "blacklistedTypes");
        if (!hook || !guard)
            continue;
        if (itemMatchesAnyType(guard, blacklist)) {
            *ignored = true;
            VANTLE_TRACE(guard << " ignored due to " << classOf(hook) << ".blacklistedTypes");
            return true;
        }

        const QVariant answer = callHookFunction(hook, "isIgnored", argument, nullptr);
        if (answer.isValid()) {
            *ignored = answer.toBool();
            VANTLE_TRACE(guard << " " << (*ignored ? "ignored" : "not ignored") << " according to " << classOf(hook)
                               << ".isIgnored()");
            return true;
        }
    }
    return false;
}

bool isItemReady(QQuickItem *item)
{
    const Item guard(item);
    const QVariant argument = QVariant::fromValue(item);
    for (const Hook &hook : hooksToAsk(guard)) {
        if (!hook || !guard)
            continue;
        const QVariant answer = callHookFunction(hook, "isItemReady", argument, nullptr);
        if (answer.isValid()) {
            const bool isReady = answer.toBool();
            VANTLE_TRACE("Got readiness " << isReady << " from " << classOf(hook) << ".isItemReady()");
            return isReady;
        }
    }
    return true;
}

} // namespace VantleQtQuickHook
