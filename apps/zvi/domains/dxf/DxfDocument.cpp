#include "apps/zvi/domains/dxf/DxfDocument.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/TextDecoding.h"
#include "apps/zvi/domains/dxf/DxfUnits.h"

#include <algorithm>
#include <cstdlib>

namespace zvi::app {

namespace {

class DocumentReader {
public:
    explicit DocumentReader(std::string_view text) : m_source(text) {}

    DxfDocument Read();

private:
    void Advance();
    bool At(std::string_view keyword) const { return m_current.code == 0 && Trimmed(m_current.value) == keyword; }
    bool AtSectionEnd() const;
    std::string_view SectionName();
    void ReadSection();
    void ReadHeader();
    void ReadHeaderVariable(std::string_view name);
    void ReadTables();
    void ReadLayer();
    void ReadBlocks();
    void ReadBlock();
    DxfRecord ReadRecord();

    DxfPairs m_source;
    DxfPair m_current;
    DxfDocument m_document;
};

/// Steps to the next group, comments passed over.
void DocumentReader::Advance() {
    constexpr int kComment = 999;
    do {
        std::optional<DxfPair> const next = m_source.Next();
        if (!next)
            throw InputError(m_source.Line(),
                             "the drawing ends before its EOF group; it was cut short, export it again");
        m_current = *next;
    } while (m_current.code == kComment);
}

DxfDocument DocumentReader::Read() {
    for (Advance(); !At("EOF"); Advance()) {
        if (!At("SECTION"))
            throw InputError(m_current.line, "expected a SECTION or EOF; the file is damaged or no DXF drawing");
        ReadSection();
        if (At("EOF"))
            break;
    }
    m_document.bytesAfterEnd = m_source.BytesLeft();
    return std::move(m_document);
}

/// True at ENDSEC, and at EOF, which closes a section that a writer left open. A section within a section is refused.
bool DocumentReader::AtSectionEnd() const {
    if (At("SECTION"))
        throw InputError(m_current.line, "a SECTION starts inside another one; the file is damaged, export it again");
    return At("ENDSEC") || At("EOF");
}

std::string_view DocumentReader::SectionName() {
    Advance();
    if (m_current.code != 2)
        throw InputError(m_current.line, "a SECTION has no name; the file is damaged, export it again");
    std::string_view const name = Trimmed(m_current.value);
    Advance();
    return name;
}

void DocumentReader::ReadSection() {
    std::string_view const name = SectionName();
    if (name == "HEADER")
        ReadHeader();
    else if (name == "TABLES")
        ReadTables();
    else if (name == "BLOCKS")
        ReadBlocks();
    while (!AtSectionEnd()) {
        if (name == "ENTITIES" && m_current.code == 0)
            m_document.records.push_back(ReadRecord());
        else
            Advance();
    }
}

void DocumentReader::ReadHeader() {
    std::string_view variable;
    for (; !AtSectionEnd(); Advance()) {
        if (m_current.code == 9)
            variable = Trimmed(m_current.value);
        else
            ReadHeaderVariable(variable);
    }
}

void DocumentReader::ReadHeaderVariable(std::string_view name) {
    if (name == "$DWGCODEPAGE" && m_current.code == 3)
        m_document.codePage = Trimmed(m_current.value);
    else if (name == "$INSUNITS" && m_current.code == 70)
        m_document.units = DxfUnitName(IntegerOf(m_current));
}

void DocumentReader::ReadTables() {
    while (!AtSectionEnd()) {
        if (At("LAYER"))
            ReadLayer();
        else
            Advance();
    }
}

void DocumentReader::ReadLayer() {
    constexpr int kFrozenBit = 1;
    constexpr int kMostColors = 255;
    DxfLayer layer;
    for (Advance(); m_current.code != 0; Advance()) {
        if (m_current.code == 2) {
            layer.name = Trimmed(m_current.value);
        } else if (m_current.code == 62) {
            int const color = IntegerOf(m_current);
            layer.off = color < 0;
            if (color != 0 && std::abs(color) <= kMostColors)
                layer.color = std::abs(color);
        } else if (m_current.code == 70) {
            layer.frozen = (IntegerOf(m_current) & kFrozenBit) != 0;
        }
    }
    m_document.layers.push_back(layer);
}

void DocumentReader::ReadBlocks() {
    while (!AtSectionEnd()) {
        if (At("BLOCK"))
            ReadBlock();
        else
            Advance();
    }
}

void DocumentReader::ReadBlock() {
    DxfBlock block;
    block.line = m_current.line;
    for (Advance(); m_current.code != 0; Advance()) {
        switch (m_current.code) {
        case 2:
            block.name = Trimmed(m_current.value);
            break;
        case 10:
            block.base.x = NumberOf(m_current);
            break;
        case 20:
            block.base.y = NumberOf(m_current);
            break;
        case 30:
            block.base.z = NumberOf(m_current);
            break;
        default:
            break;
        }
    }
    while (!AtSectionEnd() && !At("ENDBLK") && !At("BLOCK"))
        block.records.push_back(ReadRecord());
    m_document.blocks.push_back(std::move(block));
}

/// Takes the record that starts at the current group.
DxfRecord DocumentReader::ReadRecord() {
    DxfRecord record{Trimmed(m_current.value), m_current.line, m_document.pairs.size(), 0};
    for (Advance(); m_current.code != 0; Advance()) {
        m_document.pairs.push_back(m_current);
        ++record.count;
    }
    return record;
}

} // namespace

DxfDocument ReadDxfDocument(std::string_view text) {
    return DocumentReader(text).Read();
}

double NumberOf(DxfPair const &pair) {
    std::optional<double> const number = ParseNumber(pair.value);
    if (!number)
        throw InputError(pair.line, "group " + std::to_string(pair.code) + " should hold a number, not " +
                                        Quoted(Trimmed(pair.value)) + "; the file is damaged, export it again");
    return *number;
}

int IntegerOf(DxfPair const &pair) {
    // Some writers give whole numbers a decimal point.
    double const number = NumberOf(pair);
    constexpr double kLargest = 2147483647.0;
    return static_cast<int>(std::clamp(number, -kLargest, kLargest));
}

} // namespace zvi::app
