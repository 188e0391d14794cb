#include "apps/zvi/contacts/input/ReadStl.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/TextDecoding.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace zvi::app {

namespace {

// A binary file: a header of any bytes, the number of facets, the facets. A facet is twelve numbers in single
// precision, the first three of them the normal, and two bytes more. All is little-endian.
constexpr std::size_t kHeaderSize = 80;
constexpr std::size_t kStart = 84;
constexpr std::size_t kFacetSize = 50;
constexpr std::size_t kNormalSize = 12;

constexpr std::string_view kBlanks = " \t\r\n\v\f";

std::uint32_t NumberAt(std::string_view bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

bool IsUsable(lib::BodyTriangle const &triangle) {
    constexpr double kMost = std::numeric_limits<float>::max();
    for (auto const &corner : triangle) {
        for (double const coordinate : corner) {
            if (!(std::abs(coordinate) <= kMost))
                return false;
        }
    }
    return true;
}

void Keep(StlFile &file, StlSolid &solid, lib::BodyTriangle const &triangle) {
    if (IsUsable(triangle))
        solid.triangles.push_back(triangle);
    else
        ++file.leftOut;
}

/// Whether the bytes are those of a text that begins as an ASCII file does.
bool IsText(std::string_view bytes) {
    constexpr std::size_t kLooked = 4096;
    std::string_view const text = WithoutUtf8Mark(bytes);
    std::size_t const begin = std::min(text.find_first_not_of(kBlanks), text.size());
    return SameNoCase(text.substr(begin, 5), "solid") && bytes.substr(0, kLooked).find('\0') == std::string_view::npos;
}

StlFile ReadBinary(std::string_view bytes) {
    if (bytes.size() < kStart)
        throw InputError(0, bytes.empty() ? "is empty; export the body again"
                                          : "is no STL file: it is too short, and does not begin with \"solid\"");
    std::uint64_t const announced = NumberAt(bytes, kHeaderSize);
    std::uint64_t const held = (bytes.size() - kStart) / kFacetSize;
    if (held < announced)
        throw InputError(0, "is cut, or is no STL file: it announces " + std::to_string(announced) +
                                " triangles and has room for " + std::to_string(held) + "; export the body again");
    StlFile file;
    StlSolid solid;
    solid.triangles.reserve(announced);
    for (std::uint64_t i = 0; i < announced; ++i) {
        std::size_t at = kStart + i * kFacetSize + kNormalSize;
        lib::BodyTriangle triangle;
        for (auto &corner : triangle) {
            for (double &coordinate : corner) {
                coordinate = std::bit_cast<float>(NumberAt(bytes, at));
                at += sizeof(float);
            }
        }
        Keep(file, solid, triangle);
    }
    file.bytesAfter = bytes.size() - kStart - announced * kFacetSize;
    file.solids.push_back(std::move(solid));
    return file;
}

/// An ASCII file, word by word.
class StlText {
public:
    explicit StlText(std::string_view text) : m_text(WithoutUtf8Mark(text)) {}

    StlFile Read() {
        StlFile file;
        while (!SkipBlanks()) {
            Expect("solid", "a solid");
            file.solids.push_back({Name(), {}});
            while (!IsNext("endsolid"))
                ReadFacet(file);
            Name();
        }
        return file;
    }

private:
    /// Goes to the next word; whether there is none.
    bool SkipBlanks() {
        for (; m_at < m_text.size() && kBlanks.find(m_text[m_at]) != std::string_view::npos; ++m_at)
            m_line += m_text[m_at] == '\n' ? 1 : 0;
        return m_at == m_text.size();
    }

    [[noreturn]] void RefuseCut() const {
        throw InputError(m_line, "the file ends within a solid: it is cut; export the body again");
    }

    std::string_view Word() {
        if (SkipBlanks())
            RefuseCut();
        std::size_t const end = std::min(m_text.find_first_of(kBlanks, m_at), m_text.size());
        std::string_view const word = m_text.substr(m_at, end - m_at);
        m_at = end;
        return word;
    }

    /// Takes the next word if it is this one.
    bool IsNext(std::string_view wanted) {
        std::size_t const before = m_at;
        std::size_t const line = m_line;
        if (SameNoCase(Word(), wanted))
            return true;
        m_at = before;
        m_line = line;
        return false;
    }

    void Expect(std::string_view wanted, char const *what) {
        std::string_view const word = Word();
        if (SameNoCase(word, wanted))
            return;
        if (m_at == m_text.size() && SameNoCase(word, wanted.substr(0, word.size())))
            RefuseCut();
        throw InputError(m_line, Quoted(word) + " stands where " + what + " (\"" + std::string(wanted) +
                                     "\") should be; is this an ASCII STL file?");
    }

    /// The rest of the line.
    std::string Name() {
        std::size_t const end = std::min(m_text.find('\n', m_at), m_text.size());
        std::string_view const name = Trimmed(m_text.substr(m_at, end - m_at));
        m_at = end;
        return DecodeDxfText(name, "");
    }

    /// What is written for no number, as "nan", is not a number.
    double Coordinate() {
        std::string_view const word = Word();
        if (std::optional<double> const number = ParseNumber(word))
            return *number;
        bool const isNoNumber = word.find_first_of("nN#") != std::string_view::npos; // nan, inf, 1.#QNAN
        if (!isNoNumber && word.find_first_not_of("+-.0123456789eE") != std::string_view::npos)
            throw InputError(m_line, Quoted(word) + " stands where a coordinate should be");
        return std::numeric_limits<double>::quiet_NaN();
    }

    void ReadFacet(StlFile &file) {
        Expect("facet", "a facet");
        Expect("normal", "the normal of a facet");
        for (int i = 0; i < 3; ++i)
            Word();
        Expect("outer", "the border of a facet");
        Expect("loop", "the border of a facet");
        lib::BodyTriangle triangle;
        for (auto &corner : triangle) {
            Expect("vertex", "a corner");
            for (double &coordinate : corner)
                coordinate = Coordinate();
        }
        Expect("endloop", "the end of a facet with three corners");
        Expect("endfacet", "the end of a facet");
        Keep(file, file.solids.back(), triangle);
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    std::size_t m_line = 1;
};

} // namespace

StlFile ReadStl(std::string_view bytes) {
    return IsText(bytes) ? StlText(bytes).Read() : ReadBinary(bytes);
}

} // namespace zvi::app
