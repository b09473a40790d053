#include "hook/delegates.h"

#include "hook/class.h"

#include <QtCore/QHash>

#include <utility>
#include <vector>

namespace Vantle {

struct DelegateFactory::Registry
{
    struct Delegates
    {
        const GeometryDelegate *geometry = nullptr;
        const InteractionDelegate *interaction = nullptr;
    };

    /// The nearest delegate of one kind on the way from \p type to its topmost base class.
    template<typename T>
    const T *nearest(const Class *type, const T *Delegates::*kind) const
    {
        for (const Class *c = type; c; c = c->super()) {
            const auto found = byClass.constFind(c);
            if (found != byClass.cend() && (*found).*kind)
                return (*found).*kind;
        }
        return nullptr;
    }

    template<typename T>
    void set(const Class *type, const T *Delegates::*kind, std::unique_ptr<T> delegate)
    {
        if (!type)
            return;
        byClass[type].*kind = delegate.get();
        if (delegate)
            owned.push_back(std::move(delegate));
    }

    QHash<const Class *, Delegates> byClass;
    // Those that were replaced stay, since a caller may be in the middle of one.
    std::vector<std::unique_ptr<Delegate>> owned;
};

Delegate::~Delegate() = default;

GeometryDelegate::WindowPoint GeometryDelegate::mapToWindow(const SharedPtr<Object> &, QPointF) const
{
    return {};
}

SharedPtr<Object> InteractionDelegate::blocker(const SharedPtr<Object> &) const
{
    return {};
}

void InteractionDelegate::takeFocus(const SharedPtr<Object> &) const {}

DelegateFactory *DelegateFactory::self()
{
    // Never destroyed: objects that die during exit may still ask it.
    static DelegateFactory *const factory = new DelegateFactory;
    return factory;
}

DelegateFactory::DelegateFactory() : m_registry(std::make_unique<Registry>()) {}

DelegateFactory::~DelegateFactory() = default;

const Delegate *DelegateFactory::delegate(const Class *type, Delegate::Type kind) const
{
    switch (kind) {
    case Delegate::GeometryDelegate: return geometryDelegate(type);
    case Delegate::InteractionDelegate: return interactionDelegate(type);
    }
    return nullptr;
}

const GeometryDelegate *DelegateFactory::geometryDelegate(const Class *type) const
{
    return m_registry->nearest(type, &Registry::Delegates::geometry);
}

const InteractionDelegate *DelegateFactory::interactionDelegate(const Class *type) const
{
    return m_registry->nearest(type, &Registry::Delegates::interaction);
}

void DelegateFactory::registerDelegate(const Class *type, std::unique_ptr<GeometryDelegate> delegate)
{
    m_registry->set(type, &Registry::Delegates::geometry, std::move(delegate));
}

void DelegateFactory::registerDelegate(const Class *type, std::unique_ptr<InteractionDelegate> delegate)
{
    m_registry->set(type, &Registry::Delegates::interaction, std::move(delegate));
}

} // namespace Vantle
