#include "zvi/core/MList.h"

#include "zvi/core/MTArray.h"
#include "zvi/core/MVector.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

using zvi::MList;
using zvi::MVector;

namespace {

std::vector<std::string> Forward(MList<std::string> const &list) {
    return {list.begin(), list.end()};
}

std::vector<std::string> Backward(MList<std::string> const &list) {
    std::vector<std::string> elements;
    for (auto const *node = list.GetTail(); node != nullptr; node = node->previous)
        elements.push_back(node->element);
    return elements;
}

} // namespace

TEST(MList, LinksBothWaysOverBlocks) {
    for (std::uint64_t const nodesPerBlock : std::initializer_list<std::uint64_t>{0, 1, 3, 10}) {
        MList<std::string> list(nodesPerBlock);
        std::vector<std::string> expected;
        for (int i = 0; i < 25; ++i) {
            expected.push_back("element number " + std::to_string(i) + " of the list");
            auto const *const node = list.AddTail(expected.back());
            EXPECT_EQ(node, list.GetTail());
        }
        EXPECT_EQ(Forward(list), expected);
        EXPECT_EQ(Backward(list), std::vector<std::string>(expected.rbegin(), expected.rend()));
        EXPECT_EQ(list.GetCount(), 25U);

        MList<std::string> copy(list);
        MList<std::string> const moved(std::move(list));
        EXPECT_EQ(Forward(copy), expected);
        EXPECT_EQ(Forward(moved), expected);
        copy.RemoveAll();
        EXPECT_TRUE(copy.Empty());
        EXPECT_EQ(copy.GetHead(), nullptr);
        copy.AddTail("again");
        EXPECT_EQ(Backward(copy), (std::vector<std::string>{"again"}));
        copy = moved;
        EXPECT_EQ(Forward(copy), expected);
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
        } catch (zvi::MStatusError const &error) {
            EXPECT_EQ(error.Status(), 0x8007000EU);
        }
        EXPECT_TRUE(list.Empty());
    }
}

TEST(MVector, HasTheImageOfItsNumbers) {
    static_assert(sizeof(MVector<double, 3>) == 3 * sizeof(double));
    static_assert(std::is_trivially_copyable_v<MVector<double, 3>>);
    MVector<double, 3> const zero;
    EXPECT_EQ(zero, (MVector<double, 3>{0, 0, 0}));

    double const bare[] = {1.0, -2.0, 4.0};
    auto vector = MVector<double, 3>::FromArray(bare);
    EXPECT_EQ(vector.Data(), &vector[0]);
    EXPECT_EQ((&vector[0])[2], 4.0);
    vector = (vector + MVector<double, 3>{1, 1, 1}) * 2.0 - -vector / 0.5;
    EXPECT_EQ(vector, (MVector<double, 3>{6, -6, 18}));
    EXPECT_EQ(0.5 * vector, (MVector<double, 3>{3, -3, 9}));
}

TEST(MTArray, ViewsWhatOthersOwn) {
    long numbers[] = {3, 1, 2};
    zvi::MTArray<long> const view(numbers, 3);
    view[1] = 10;
    EXPECT_EQ(std::vector<long>(view.begin(), view.end()), (std::vector<long>{3, 10, 2}));
    EXPECT_EQ(zvi::MTArray<long>(nullptr, 0).begin(), zvi::MTArray<long>(nullptr, 0).end());
    EXPECT_EQ(zvi::MTArray<long>(numbers, -1).end(), numbers);
    EXPECT_EQ(sizeof(zvi::MTArray<long>), 16U);
}
