#include "zvi/core/MList.h"

#include "zvi/core/MTArray.h"
#include "zvi/core/MVector.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace zvi::lib::test {

namespace {

using Texts = std::vector<std::string>;

void ExpectElements(MList<std::string> const &list, Texts const &expected) {
    EXPECT_EQ(Texts(list.begin(), list.end()), expected);
    Texts backward;
    for (auto const *node = list.GetTail(); node != nullptr; node = node->previous)
        backward.push_back(node->element);
    EXPECT_EQ(backward, Texts(expected.rbegin(), expected.rend()));
    EXPECT_EQ(list.GetCount(), expected.size());
    EXPECT_TRUE(list.IsConsistent());
}

} // namespace

TEST(MList, LinksBothWaysOverBlocks) {
    for (std::uint64_t const nodesPerBlock : std::initializer_list<std::uint64_t>{0, 1, 3, 10}) {
        MList<std::string> list(nodesPerBlock);
        Texts expected;
        for (int i = 0; i < 25; ++i) {
            expected.push_back("element number " + std::to_string(i) + " of the list");
            auto const *const node = list.AddTail(expected.back());
            EXPECT_EQ(node, list.GetTail());
        }
        ExpectElements(list, expected);
        MList<std::string> copy(list);
        MList<std::string> const moved(std::move(list));
        ExpectElements(copy, expected);
        ExpectElements(moved, expected);
        copy.RemoveAll();
        EXPECT_TRUE(copy.Empty());
        EXPECT_EQ(copy.GetHead(), nullptr);
        copy.AddTail("again");
        ExpectElements(copy, {"again"});
        copy = moved;
        ExpectElements(copy, expected);
        list = std::move(copy);
        ExpectElements(list, expected);
    }
}

TEST(MList, AppendsItsOwnElements) {
    MList<std::string> list{"a text that lives outside of the node that holds it"};
    for (int i = 0; i < 30; ++i)
        list.AddTail(list.GetTail()->element);
    EXPECT_EQ(list.GetTail()->element, list.GetHead()->element);
}

TEST(MList, TellsThatABlockIsTooLarge) {
    for (std::uint64_t const nodesPerBlock : {std::uint64_t{1} << 61, ~std::uint64_t{0}}) {
        MList<int *> list(nodesPerBlock);
        try {
            list.AddTail(nullptr);
            FAIL() << nodesPerBlock;
        } catch (MStatusError const &error) {
            EXPECT_EQ(error.Status(), 0x8007000EU);
        }
        EXPECT_TRUE(list.Empty());
    }
}

TEST(MVector, HasTheImageOfItsNumbers) {
    using Vector = MVector<double, 3>;
    static_assert(sizeof(Vector) == 3 * sizeof(double) && std::is_trivially_copyable_v<Vector>);
    EXPECT_EQ(Vector(), (Vector{0, 0, 0}));
    double const bare[] = {1.0, -2.0, 4.0};
    auto vector = Vector::FromArray(bare);
    EXPECT_EQ(vector.Data(), &vector[0]);
    EXPECT_EQ((&vector[0])[2], 4.0);
    vector = (vector + Vector{1, 1, 1}) * 2.0 - -vector / 0.5;
    EXPECT_EQ(vector, (Vector{6, -6, 18}));
    EXPECT_EQ(0.5 * vector, (Vector{3, -3, 9}));
}

TEST(MTArray, ViewsWhatOthersOwn) {
    using View = MTArray<long>;
    long numbers[] = {3, 1, 2};
    View const view(numbers, 3);
    view[1] = 10;
    EXPECT_EQ(std::vector<long>(view.begin(), view.end()), (std::vector<long>{3, 10, 2}));
    EXPECT_EQ(View(nullptr, 0).begin(), View(nullptr, 0).end());
    EXPECT_EQ(View(numbers, -1).end(), numbers);
    EXPECT_EQ(sizeof(View), 16U);
}

} // namespace zvi::lib::test
