#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace zvi::lib::test {

template <class Number>
void ReadCell(std::istream &words, Number &cell) {
    std::string word;
    EXPECT_TRUE(words >> word) << "too few cells";
    cell = static_cast<Number>(std::strtod(word.c_str(), nullptr));
}

inline void ReadCell(std::istream &words, std::string &cell) {
    EXPECT_TRUE(words >> cell) << "too few cells";
}

template <class Row>
std::vector<Row> ReadRows(std::string const &text) {
    std::vector<Row> rows;
    std::istringstream lines(text);
    for (std::string line, rest; std::getline(lines, line, ';');) {
        std::istringstream words(line);
        std::apply([&](auto &...cell) { (ReadCell(words, cell), ...); }, rows.emplace_back());
        EXPECT_FALSE(words >> rest) << "too many cells in" << line;
    }
    return rows;
}

/// A table written as a text: "1 0 90; 0 1 nan" has two rows of three cells. Numbers are what strtod reads, and
/// texts hold no blanks.
template <class... Cells>
auto Rows(std::string const &text) {
    return ReadRows<std::tuple<Cells...>>(text);
}
template <std::size_t N>
auto Rows(std::string const &text) {
    return ReadRows<std::array<double, N>>(text);
}

} // namespace zvi::lib::test
