#include "base/Array.h"
#include "base/List.h"

#include "support/FailureInjection.h"
#include "support/Random.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <list>
#include <vector>

namespace {

struct Node {
    int value = 0;
    Node* next = nullptr;
    Node* previous = nullptr;
};

// The list read from both ends has to be `expected`.
void ExpectList(const List<Node>& list, const std::list<int>& expected) {
    std::list<int> forward;
    std::list<int> backward;
    for (const Node* node = list.head; node; node = node->next) forward.push_back(node->value);
    for (const Node* node = list.tail; node; node = node->previous) backward.push_front(node->value);
    EXPECT_EQ(forward, expected);
    EXPECT_EQ(backward, expected);
    EXPECT_EQ(list.IsEmpty(), expected.empty());
}

} // namespace

TEST(List, AppendsPrependsAndInserts) {
    Node a{1}, b{2}, c{3}, d{4};
    List<Node> list;
    ExpectList(list, {});
    list.Append(&b);
    list.Prepend(&a);
    list.Append(&d);
    list.InsertAfter(&b, &c);
    ExpectList(list, {1, 2, 3, 4});
}

TEST(List, InsertAfterNullPutsAtTheHead) {
    Node a{1}, b{2};
    List<Node> list;
    list.InsertAfter(nullptr, &b);
    list.InsertAfter(nullptr, &a);
    ExpectList(list, {1, 2});
}

TEST(List, RemoveUnlinksHeadTailAndMiddle) {
    Node a{1}, b{2}, c{3}, d{4};
    List<Node> list;
    for (Node* node : {&a, &b, &c, &d}) list.Append(node);
    list.Remove(&b);
    ExpectList(list, {1, 3, 4});
    EXPECT_EQ(b.next, nullptr);
    EXPECT_EQ(b.previous, nullptr);
    list.Remove(&a);
    ExpectList(list, {3, 4});
    list.Remove(&d);
    ExpectList(list, {3});
    list.Remove(&c);
    ExpectList(list, {});
}

TEST(List, TakeHeadUnlinksTheFirst) {
    Node a{1}, b{2};
    List<Node> list;
    EXPECT_EQ(list.TakeHead(), nullptr);
    list.Append(&a);
    list.Append(&b);
    EXPECT_EQ(list.TakeHead(), &a);
    ExpectList(list, {2});
    EXPECT_EQ(list.TakeHead(), &b);
    ExpectList(list, {});
}

TEST(List, RandomOperationsMatchAStandardList) {
    Random random(3);
    Node nodes[30];
    for (int i = 0; i < 30; ++i) nodes[i].value = i;
    List<Node> list;
    std::list<int> model;
    for (int step = 0; step < 20000; ++step) {
        const int pick = static_cast<int>(random.Below(30));
        const auto found = std::find(model.begin(), model.end(), pick);
        if (found != model.end()) {
            list.Remove(&nodes[pick]);
            model.erase(found);
        } else if (model.empty() || random.Below(3) == 0) {
            list.Prepend(&nodes[pick]);
            model.push_front(pick);
        } else {
            auto after = model.begin();
            std::advance(after, static_cast<long>(random.Below(model.size())));
            list.InsertAfter(&nodes[*after], &nodes[pick]);
            model.insert(std::next(after), pick);
        }
        ExpectList(list, model);
        if (HasFailure()) FAIL() << step;
    }
}

TEST(Array, GrowsToTwiceTheCapacityOrTheSizeNeeded) {
    Array<uint64_t> array;
    EXPECT_TRUE(array.IsEmpty());
    ASSERT_TRUE(array.Reserve(10));
    const uint64_t* const items = array.Items();
    for (uint64_t i = 0; i < 10; ++i) ASSERT_TRUE(array.Append(i));
    EXPECT_EQ(array.Items(), items);
    for (uint64_t i = 10; i < 1000; ++i) ASSERT_TRUE(array.Append(i));
    EXPECT_EQ(array.Count(), 1000u);
    for (uint64_t i = 0; i < 1000; ++i) ASSERT_EQ(array[i], i);
}

TEST(Array, AppendTakesAnItemOfItsOwn) {
    Array<int> array;
    ASSERT_TRUE(array.Append(42));
    for (int i = 0; i < 100; ++i) ASSERT_TRUE(array.Append(array[0]));
    EXPECT_EQ(array.Last(), 42);
}

TEST(Array, ClearKeepsTheStorage) {
    Array<int> array;
    for (int i = 0; i < 100; ++i) ASSERT_TRUE(array.Append(i));
    array.Clear();
    EXPECT_TRUE(array.IsEmpty());
    Heap::SetFailureHook([] { return true; });
    bool all = true;
    for (int i = 0; i < 100; ++i) all = array.Append(i) && all;
    Heap::SetFailureHook(nullptr);
    EXPECT_TRUE(all);
}

TEST(Array, TruncateRemoveLastAndRelease) {
    Array<int> array;
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(array.Append(i));
    array.RemoveLast();
    EXPECT_EQ(array.Last(), 3);
    array.Truncate(2);
    EXPECT_EQ(array.Last(), 1);
    array.Release();
    EXPECT_EQ(array.Items(), nullptr);
    EXPECT_TRUE(array.IsEmpty());
}

TEST(Array, AFailingAppendLeavesItUnchanged) {
    const uint64_t failures = FailEachAllocation([] {
        Array<int> array;
        for (int i = 0; i < 20; ++i) {
            if (array.Append(i)) continue;
            EXPECT_EQ(array.Count(), static_cast<size_t>(i));
            for (int k = 0; k < i; ++k) EXPECT_EQ(array[static_cast<size_t>(k)], k);
            return false;
        }
        return true;
    });
    EXPECT_EQ(failures, 6u); // capacities 1, 2, 4, 8, 16, 32
}

TEST(Array, ARequestPastTheAddressSpaceFails) {
    Array<uint64_t> array;
    ASSERT_TRUE(array.Append(1));
    EXPECT_FALSE(array.Reserve(SIZE_MAX / 2));
    EXPECT_EQ(array.Count(), 1u);
    EXPECT_EQ(array[0], 1u);
}
