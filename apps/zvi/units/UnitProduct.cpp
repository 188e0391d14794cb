#include "apps/zvi/units/UnitProduct.h"

#include "apps/zvi/common/Characters.h"

#include <string_view>

namespace zvi::app {

namespace {

/// Standard gravity, which labels call g: a weight divided by it is a mass.
constexpr UnitDefinition kGravity = {"g", {{1, 0, -2}}, 980665, 1e5};

/// Largest power of a unit; more is a slip.
constexpr int kLargestPower = 9;

void Multiply(UnitProduct &product, UnitProduct const &by, int power) {
    for (std::size_t i = 0; i < product.dimension.powers.size(); ++i)
        product.dimension.powers[i] =
            static_cast<std::int8_t>(product.dimension.powers[i] + by.dimension.powers[i] * power);
    for (int i = 0; i < power; ++i) {
        product.numerator *= by.numerator;
        product.denominator *= by.denominator;
    }
    for (int i = 0; i > power; --i) {
        product.numerator *= by.denominator;
        product.denominator *= by.numerator;
    }
}

UnitProduct ProductOf(UnitDefinition const &unit) {
    return {unit.dimension, unit.numerator, unit.denominator, false};
}

class Reader {
public:
    Reader(std::string_view text, bool isGravity) : m_text(text), m_isGravity(isGravity) {}

    UnitReading Read() {
        UnitReading reading;
        reading.product = Product();
        if (m_at < m_text.size())
            reading.product.reset();
        if (!reading.product)
            reading.unknown = m_unknown;
        else
            reading.product->isTemperature = FindUnit(m_text) && IsTemperature(*reading.product);
        return reading;
    }

private:
    static bool IsTemperature(UnitProduct const &product) {
        return product.dimension.powers[static_cast<std::size_t>(Base::kTemperature)] == 1;
    }

    char Here() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

    std::optional<UnitProduct> Product() {
        std::optional<UnitProduct> product = Power();
        while (product && (Here() == '*' || Here() == '/' || Here() == '.')) {
            int const sign = m_text[m_at++] == '/' ? -1 : 1;
            std::optional<UnitProduct> const factor = Power();
            if (!factor)
                return std::nullopt;
            Multiply(*product, *factor, sign);
        }
        return product;
    }

    /// A factor and its power.
    std::optional<UnitProduct> Power() {
        std::optional<UnitProduct> const factor = Factor();
        if (!factor)
            return std::nullopt;
        bool const isPower = Here() == '^';
        m_at += isPower;
        bool const isNegative = isPower && Here() == '-';
        m_at += isNegative;
        if (!IsDigit(Here()))
            return isPower ? std::nullopt : factor;
        int const power = m_text[m_at++] - '0';
        if (IsDigit(Here()) || power > kLargestPower)
            return std::nullopt;
        UnitProduct raised;
        Multiply(raised, *factor, isNegative ? -power : power);
        return raised;
    }

    std::optional<UnitProduct> Factor() {
        if (Here() == '(')
            return Parenthesis();
        if (Here() == '1') {
            ++m_at;
            return UnitProduct{};
        }
        std::size_t const begin = m_at;
        while (m_at < m_text.size() && m_text.find_first_of("*/()^.0123456789", m_at) != m_at)
            ++m_at;
        // The count of things is written with a point.
        if (Here() == '.' && FindUnit(m_text.substr(begin, m_at + 1 - begin)))
            ++m_at;
        return Unit(m_text.substr(begin, m_at - begin));
    }

    std::optional<UnitProduct> Parenthesis() {
        ++m_at;
        std::optional<UnitProduct> const product = Product();
        if (!product || Here() != ')')
            return std::nullopt;
        ++m_at;
        return product;
    }

    std::optional<UnitProduct> Unit(std::string_view word) {
        if (m_isGravity && word == kGravity.name)
            return ProductOf(kGravity);
        if (UnitDefinition const *unit = FindUnit(word))
            return ProductOf(*unit);
        for (std::size_t length = 1; length < word.size(); ++length) {
            UnitDefinition const *first = FindUnit(word.substr(0, length));
            UnitDefinition const *second = FindUnit(word.substr(length));
            // Letters alone may be meant as prefixes, but for that of the newton.
            bool const isSure = length > 1 || word[0] == 'N';
            // A power belongs to the second alone: it is read again.
            if (first && second && isSure) {
                m_at -= word.size() - length;
                std::optional<UnitProduct> product = Power();
                if (product)
                    Multiply(*product, ProductOf(*first), 1);
                return product;
            }
        }
        m_unknown = word;
        return std::nullopt;
    }

    std::string_view m_text;
    bool m_isGravity;
    std::size_t m_at = 0;
    std::string m_unknown;
};

} // namespace

UnitReading ReadUnitProduct(std::string const &plain, bool isGravity) {
    return Reader(plain, isGravity).Read();
}

double FactorBetween(UnitProduct const &from, UnitProduct const &to) {
    return (from.numerator * to.denominator) / (from.denominator * to.numerator);
}

} // namespace zvi::app
