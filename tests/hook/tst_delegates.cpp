#include "hook/delegates.h"

#include "hook/testobjects.h"

#include <gtest/gtest.h>

using namespace Vantle;
using VantleTest::newClass;

namespace {

class NotReady final : public InteractionDelegate
{
public:
    explicit NotReady(const QString &reason, bool *alive = nullptr) : m_reason(reason), m_alive(alive)
    {
        if (m_alive)
            *m_alive = true;
    }
    ~NotReady() override
    {
        if (m_alive)
            *m_alive = false;
    }
    QString notReadyReason(const SharedPtr<Object> &) const override { return m_reason; }

private:
    QString m_reason;
    bool *m_alive;
};

class FixedGeometry final : public GeometryDelegate
{
public:
    QPoint mapFromGlobal(const SharedPtr<Object> &, int x, int y) const override { return {x - 1, y - 2}; }
    SharedPtr<Object> childAt(const SharedPtr<Object> &, int, int) const override { return {}; }
    SharedPtr<Object> focusChild(const SharedPtr<Object> &) const override { return {}; }
    QRect screenRect(const SharedPtr<Object> &) const override { return {1, 2, 3, 4}; }
};

class Delegates : public testing::Test
{
protected:
    QString reasonFor(const Class *type) const
    {
        const InteractionDelegate *delegate = factory->interactionDelegate(type);
        return delegate ? delegate->notReadyReason({}) : QStringLiteral("no delegate");
    }

    void setReason(const Class *type, const QString &reason)
    {
        factory->registerDelegate(type, std::make_unique<NotReady>(reason));
    }

    DelegateFactory *factory = DelegateFactory::self();
    const Class *base = newClass(QStringLiteral("Base"));
    const Class *middle = newClass(QStringLiteral("Middle"), base);
    const Class *derived = newClass(QStringLiteral("Derived"), middle);
};

TEST_F(Delegates, haveTheNumbersThatTheInterfaceLaysDown)
{
    EXPECT_EQ(Delegate::GeometryDelegate, 7);
    EXPECT_EQ(Delegate::InteractionDelegate, 8);
}

TEST_F(Delegates, areNullForAClassThatNobodyRegistered)
{
    EXPECT_EQ(factory, DelegateFactory::self());
    EXPECT_EQ(factory->delegate(derived, Delegate::GeometryDelegate), nullptr);
    EXPECT_EQ(factory->delegate(derived, Delegate::InteractionDelegate), nullptr);
    EXPECT_EQ(factory->geometryDelegate(derived), nullptr);
    EXPECT_EQ(factory->interactionDelegate(derived), nullptr);
}

TEST_F(Delegates, areNullForANullClassAndAnUnknownKind)
{
    setReason(nullptr, QStringLiteral("null"));
    setReason(base, QStringLiteral("base"));
    EXPECT_EQ(factory->interactionDelegate(nullptr), nullptr);
    EXPECT_EQ(factory->delegate(nullptr, Delegate::InteractionDelegate), nullptr);
    EXPECT_EQ(factory->delegate(base, static_cast<Delegate::Type>(9)), nullptr);
}

TEST_F(Delegates, areInheritedFromTheNearestBaseClass)
{
    setReason(base, QStringLiteral("base"));
    EXPECT_EQ(reasonFor(derived), QStringLiteral("base"));
    setReason(middle, QStringLiteral("middle"));
    EXPECT_EQ(reasonFor(derived), QStringLiteral("middle"));
    setReason(derived, QStringLiteral("derived"));
    EXPECT_EQ(reasonFor(derived), QStringLiteral("derived"));
    EXPECT_EQ(reasonFor(middle), QStringLiteral("middle"));
    EXPECT_EQ(reasonFor(base), QStringLiteral("base"));
}

TEST_F(Delegates, ofTheTwoKindsAreFoundIndependently)
{
    setReason(middle, QStringLiteral("middle"));
    factory->registerDelegate(base, std::make_unique<FixedGeometry>());
    EXPECT_EQ(reasonFor(derived), QStringLiteral("middle"));
    ASSERT_NE(factory->geometryDelegate(derived), nullptr);
    EXPECT_EQ(factory->geometryDelegate(derived)->mapFromGlobal({}, 5, 5), QPoint(4, 3));
    EXPECT_EQ(factory->geometryDelegate(derived)->screenRect({}), QRect(1, 2, 3, 4));
    EXPECT_EQ(factory->delegate(derived, Delegate::GeometryDelegate), factory->geometryDelegate(base));
    EXPECT_EQ(factory->delegate(derived, Delegate::InteractionDelegate), factory->interactionDelegate(middle));
    EXPECT_EQ(reasonFor(base), QStringLiteral("no delegate"));
}

TEST_F(Delegates, areReplacedButStayValidForWhoeverHoldsThem)
{
    bool alive = false;
    factory->registerDelegate(base, std::make_unique<NotReady>(QStringLiteral("first"), &alive));
    const InteractionDelegate *first = factory->interactionDelegate(derived);
    ASSERT_NE(first, nullptr);
    setReason(base, QStringLiteral("second"));
    EXPECT_EQ(reasonFor(derived), QStringLiteral("second"));
    EXPECT_TRUE(alive);
    EXPECT_EQ(first->notReadyReason({}), QStringLiteral("first"));
}

TEST_F(Delegates, canBeTakenBackFromAClass)
{
    setReason(base, QStringLiteral("base"));
    setReason(derived, QStringLiteral("derived"));
    factory->registerDelegate(derived, std::unique_ptr<InteractionDelegate>());
    EXPECT_EQ(reasonFor(derived), QStringLiteral("base"));
}

} // namespace
