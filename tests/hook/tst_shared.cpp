#include "hook/shared.h"

#include <gtest/gtest.h>

#include <functional>
#include <type_traits>

using Vantle::Shared;
using Vantle::SharedPtr;

namespace {

class Node : public Shared
{
public:
    explicit Node(int *alive = nullptr) : m_alive(alive)
    {
        if (m_alive)
            ++*m_alive;
    }
    Node(const Node &other) : Shared(other), next(other.next), m_alive(other.m_alive)
    {
        if (m_alive)
            ++*m_alive;
    }
    Node &operator=(const Node &) = default;
    ~Node() override
    {
        if (onDestruction)
            onDestruction(this);
        if (m_alive)
            --*m_alive;
    }

    SharedPtr<Node> next;
    std::function<void(Node *)> onDestruction;

private:
    int *m_alive;
};

class Leaf final : public Node
{
public:
    using Node::Node;
};

TEST(Shared, startsWithoutReferences)
{
    const Node node;
    EXPECT_EQ(node.referenceCount(), 0);
}

TEST(Shared, isDeletedWithTheLastReference)
{
    int alive = 0;
    auto *node = new Node(&alive);
    node->addReference();
    node->addReference();
    EXPECT_EQ(node->referenceCount(), 2);
    node->releaseReference();
    EXPECT_EQ(node->referenceCount(), 1);
    EXPECT_EQ(alive, 1);
    node->releaseReference();
    EXPECT_EQ(alive, 0);
}

TEST(Shared, copiesCountForThemselves)
{
    int alive = 0;
    const SharedPtr<Node> original(new Node(&alive));
    const SharedPtr<Node> copy(new Node(*original));
    EXPECT_EQ(original->referenceCount(), 1);
    EXPECT_EQ(copy->referenceCount(), 1);
    *copy = *original;
    EXPECT_EQ(original->referenceCount(), 1);
    EXPECT_EQ(copy->referenceCount(), 1);
    EXPECT_EQ(alive, 2);
}

TEST(SharedPtr, isNullByDefault)
{
    const SharedPtr<Node> none;
    EXPECT_TRUE(none.isNull());
    EXPECT_FALSE(static_cast<bool>(none));
    EXPECT_EQ(none.get(), nullptr);
    EXPECT_EQ(none, SharedPtr<Node>(nullptr));
}

TEST(SharedPtr, countsEveryCopyAndNoMove)
{
    SharedPtr<Node> first(new Node);
    Node *const node = first.get();
    SharedPtr<Node> second(first);
    EXPECT_EQ(node->referenceCount(), 2);
    SharedPtr<Node> moved(std::move(first));
    EXPECT_EQ(node->referenceCount(), 2);
    EXPECT_EQ(first.get(), nullptr);
    first = std::move(moved);
    EXPECT_EQ(node->referenceCount(), 2);
    EXPECT_EQ(moved.get(), nullptr);
    second = nullptr;
    EXPECT_EQ(node->referenceCount(), 1);
    first.swap(second);
    EXPECT_EQ(second.get(), node);
    EXPECT_EQ(node->referenceCount(), 1);
    EXPECT_TRUE(first.isNull());
}

TEST(SharedPtr, survivesAssignmentToItself)
{
    int alive = 0;
    SharedPtr<Node> pointer(new Node(&alive));
    SharedPtr<Node> &same = pointer;
    pointer = same;
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(pointer->referenceCount(), 1);
    pointer = std::move(same);
    ASSERT_TRUE(pointer);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(pointer->referenceCount(), 1);
}

TEST(SharedPtr, survivesAssignmentOfWhatItAloneKeepsAlive)
{
    int alive = 0;
    SharedPtr<Node> head(new Node(&alive));
    head->next = SharedPtr<Node>(new Node(&alive));
    head->next->next = SharedPtr<Node>(new Node(&alive));
    head = head->next;
    EXPECT_EQ(alive, 2);
    head = std::move(head->next);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(head->referenceCount(), 1);
}

TEST(SharedPtr, twoPointersMadeFromOneObjectShareItsCount)
{
    int alive = 0;
    auto *node = new Node(&alive);
    {
        const SharedPtr<Node> first(node);
        const SharedPtr<Node> second(node);
        EXPECT_EQ(first, second);
        EXPECT_EQ(node->referenceCount(), 2);
    }
    EXPECT_EQ(alive, 0);
}

TEST(SharedPtr, convertsToTheBaseClassOnly)
{
    int alive = 0;
    SharedPtr<Shared> base;
    {
        const SharedPtr<Leaf> leaf(new Leaf(&alive));
        base = leaf;
        EXPECT_EQ(base.get(), leaf.get());
        EXPECT_EQ(leaf->referenceCount(), 2);
    }
    EXPECT_EQ(alive, 1);
    base = nullptr;
    EXPECT_EQ(alive, 0) << "the destructor of the derived class must run";
    static_assert(std::is_convertible_v<SharedPtr<Leaf>, SharedPtr<Node>>);
    static_assert(!std::is_convertible_v<SharedPtr<Node>, SharedPtr<Leaf>>);
    static_assert(!std::is_convertible_v<Node *, SharedPtr<Node>>, "taking a reference must be visible");
}

TEST(SharedPtr, isNullAlreadyWhileItsObjectIsDestroyed)
{
    int alive = 0;
    SharedPtr<Node> pointer(new Node(&alive));
    bool seen = false;
    pointer->onDestruction = [&](Node *) {
        seen = true;
        EXPECT_TRUE(pointer.isNull());
    };
    pointer = nullptr;
    EXPECT_TRUE(seen);
    EXPECT_EQ(alive, 0);
}

TEST(SharedPtr, holdsTheNewObjectAlreadyWhileTheOldOneIsDestroyed)
{
    SharedPtr<Node> pointer(new Node);
    const SharedPtr<Node> replacement(new Node);
    Node *seen = nullptr;
    pointer->onDestruction = [&](Node *) { seen = pointer.get(); };
    pointer = replacement;
    EXPECT_EQ(seen, replacement.get());
}

TEST(SharedPtr, mayBeAssignedToByTheDestructorThatItSetOff)
{
    int alive = 0;
    SharedPtr<Node> pointer(new Node(&alive));
    pointer->onDestruction = [&](Node *) { pointer = SharedPtr<Node>(new Node(&alive)); };
    pointer = nullptr;
    EXPECT_EQ(alive, 1);
    EXPECT_TRUE(pointer);
}

TEST(SharedPtr, mayBeMadeToAnObjectWhoseDestructorRuns)
{
    int alive = 0;
    int destructions = 0;
    SharedPtr<Node> pointer(new Node(&alive));
    pointer->onDestruction = [&](Node *node) {
        ++destructions;
        const SharedPtr<Node> again(node);
        const SharedPtr<Node> copy(again);
    };
    pointer = nullptr;
    EXPECT_EQ(destructions, 1);
    EXPECT_EQ(alive, 0);
}

} // namespace
