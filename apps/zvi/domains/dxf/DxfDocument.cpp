#include "apps/zvi/domains/dxf/DxfDocument.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/domains/dxf/DxfUnits.h"
#include "apps/zvi/domains/dxf/TextDecoding.h"

#include <algorithm>

namespace zvi::app {

namespace {

class DocumentReader {
public:
    explicit DocumentReader(std::string_view text) : source(text) {}

    DxfDocument Read();

private:
    void Advance();
    bool At(std::string_view keyword) const { return current.code == 0 && Trimmed(current.value) == keyword; }
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

    DxfPairs source;
    DxfPair current;
    DxfDocument document;
};

/// Steps to the next group, comments passed over.
void DocumentReader::Advance() {
    constexpr int kComment = 999;
    do {
        std::optional<DxfPair> const next = source.Next();
        if (!next) {
            throw InputError(source.Line(), "the drawing ends before its EOF group; it was cut short, export it again");
        }
        current = *next;
    } while (current.code == kComment);
}

DxfDocument DocumentReader::Read() {
    for (Advance(); !At("EOF"); Advance()) {
        if (!At("SECTION")) {
            throw InputError(current.line, "expected a SECTION or EOF; the file is damaged or no DXF drawing");
        }
        ReadSection();
        if (At("EOF")) {
            break;
        }
    }
    document.bytesAfterEnd = source.BytesLeft();
    return std::move(document);
}

/// True at ENDSEC, and at EOF, which closes a section that a writer left open. A section within a section is refused.
bool DocumentReader::AtSectionEnd() const {
    if (At("SECTION")) {
        throw InputError(current.line, "a SECTION starts inside another one; the file is damaged, export it again");
    }
    return At("ENDSEC") || At("EOF");
}

std::string_view DocumentReader::SectionName() {
    Advance();
    if (current.code != 2) {
        throw InputError(current.line, "a SECTION has no name; the file is damaged, export it again");
    }
    std::string_view const name = Trimmed(current.value);
    Advance();
    return name;
}

void DocumentReader::ReadSection() {
    std::string_view const name = SectionName();
    if (name == "HEADER") {
        ReadHeader();
    } else if (name == "TABLES") {
        ReadTables();
    } else if (name == "BLOCKS") {
        ReadBlocks();
    }
    while (!AtSectionEnd()) {
        if (name == "ENTITIES" && current.code == 0) {
            document.records.push_back(ReadRecord());
        } else {
            Advance();
        }
    }
}

void DocumentReader::ReadHeader() {
    std::string_view variable;
    for (; !AtSectionEnd(); Advance()) {
        if (current.code == 9) {
            variable = Trimmed(current.value);
        } else {
            ReadHeaderVariable(variable);
        }
    }
}

void DocumentReader::ReadHeaderVariable(std::string_view name) {
    if (name == "$DWGCODEPAGE" && current.code == 3) {
        document.codePage = Trimmed(current.value);
    } else if (name == "$INSUNITS" && current.code == 70) {
        document.units = DxfUnitName(IntegerOf(current));
    }
}

void DocumentReader::ReadTables() {
    while (!AtSectionEnd()) {
        if (At("LAYER")) {
            ReadLayer();
        } else {
            Advance();
        }
    }
}

void DocumentReader::ReadLayer() {
    constexpr int kFrozenBit = 1;
    DxfLayer layer;
    for (Advance(); current.code != 0; Advance()) {
        if (current.code == 2) {
            layer.name = Trimmed(current.value);
        } else if (current.code == 62) {
            layer.off = IntegerOf(current) < 0;
        } else if (current.code == 70) {
            layer.frozen = (IntegerOf(current) & kFrozenBit) != 0;
        }
    }
    document.layers.push_back(layer);
}

void DocumentReader::ReadBlocks() {
    while (!AtSectionEnd()) {
        if (At("BLOCK")) {
            ReadBlock();
        } else {
            Advance();
        }
    }
}

void DocumentReader::ReadBlock() {
    DxfBlock block;
    block.line = current.line;
    for (Advance(); current.code != 0; Advance()) {
        switch (current.code) {
        case 2:
            block.name = Trimmed(current.value);
            break;
        case 10:
            block.base.x = NumberOf(current);
            break;
        case 20:
            block.base.y = NumberOf(current);
            break;
        case 30:
            block.base.z = NumberOf(current);
            break;
        default:
            break;
        }
    }
    while (!AtSectionEnd() && !At("ENDBLK") && !At("BLOCK")) {
        block.records.push_back(ReadRecord());
    }
    document.blocks.push_back(std::move(block));
}

/// Takes the record that starts at the current group.
DxfRecord DocumentReader::ReadRecord() {
    DxfRecord record{Trimmed(current.value), current.line, document.pairs.size(), 0};
    for (Advance(); current.code != 0; Advance()) {
        document.pairs.push_back(current);
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
    if (!number) {
        throw InputError(pair.line, "group " + std::to_string(pair.code) + " should hold a number, not " +
                                        Quoted(Trimmed(pair.value)) + "; the file is damaged, export it again");
    }
    return *number;
}

int IntegerOf(DxfPair const &pair) {
    // Some writers give whole numbers a decimal point.
    double const number = NumberOf(pair);
    constexpr double kLargest = 2147483647.0;
    return static_cast<int>(std::clamp(number, -kLargest, kLargest));
}

} // namespace zvi::app
