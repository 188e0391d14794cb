#include "apps/zvi/domains/output/DxfDrawing.h"

#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/domains/dxf/DxfUnits.h"
#include "apps/zvi/domains/output/Loops.h"

#include <charconv>
#include <cmath>
#include <numbers>
#include <vector>

namespace zvi::app {

namespace {

using lib::DrawingPiece;
using lib::DrawingPoint;

/// Handles that others refer to; those of domains and their layers follow.
constexpr char const *kModelSpace = "20";
constexpr char const *kPaperSpace = "21";
constexpr char const *kRootDictionary = "30";
constexpr char const *kGroupDictionary = "31";
constexpr unsigned kFirstFreeHandle = 0x100;

std::string LayerName(std::size_t domain) {
    return "DOMAIN_" + std::to_string(domain + 1);
}

/// Number of a colour of the format's palette: every tenth from 10 to 240 is a full hue; nine steps of ten apart.
int LayerColor(std::size_t domain) {
    return 10 + 10 * static_cast<int>(domain * 9 % 24);
}

/// A corner of a polyline with the bulge of what leaves it.
struct Corner {
    DrawingPoint at;
    double bulge = 0.0;
};

/// Arcs over half a turn get a corner in their middle, because the bulge grows without bound towards the full turn.
void AddCorners(std::vector<Corner> &corners, DrawingPiece const &piece) {
    double const sweep = SweepOf(piece);
    int const parts = std::abs(sweep) > std::numbers::pi ? 2 : 1;
    for (int i = 0; i < parts; ++i)
        corners.push_back({PointOn(piece, double(i) / parts), std::tan(sweep / (4.0 * parts))});
}

class DxfWriter {
public:
    DxfWriter(lib::DrawingResult const &domains, std::string const &unitName) : m_result(domains), m_units(unitName) {}

    std::string Write();

private:
    void Group(int code, std::string const &value) { m_text += std::to_string(code) + "\n" + value + "\n"; }
    void Group(int code, int value) { Group(code, std::to_string(value)); }
    void Open(char const *section);
    void Close() { Group(0, "ENDSEC"); }
    std::string NewHandle();
    void Header();
    void Tables();
    void Table(char const *name, char const *handle, int count);
    void Record(char const *type, std::string const &handle, char const *table, char const *subclass,
                std::string const &name);
    void LineTypes();
    void Layers();
    void Layer(std::string const &handle, std::string const &name, int color);
    void Blocks();
    void Block(char const *name, char const *record, char const *begin, char const *end);
    void Entities();
    void Loop(std::vector<DrawingPiece> const &loop, std::string const &layer);
    void Objects();

    lib::DrawingResult const &m_result;
    std::string const &m_units;
    std::string m_text;
    std::string m_body;
    unsigned m_nextHandle = kFirstFreeHandle;
};

std::string HexText(unsigned value) {
    char buffer[16];
    auto const end = std::to_chars(buffer, buffer + sizeof buffer, value, 16).ptr;
    std::string hex(buffer, end);
    for (char &c : hex)
        c = c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c;
    return hex;
}

/// The header names the next free handle, so it is written last and put first.
std::string DxfWriter::Write() {
    Tables();
    Blocks();
    Entities();
    Objects();
    Group(0, "EOF");
    m_body.swap(m_text);
    Header();
    return m_text + m_body;
}

void DxfWriter::Open(char const *section) {
    Group(0, "SECTION");
    Group(2, section);
}

std::string DxfWriter::NewHandle() {
    return HexText(m_nextHandle++);
}

void DxfWriter::Header() {
    Open("HEADER");
    Group(9, "$ACADVER");
    Group(1, "AC1015");
    Group(9, "$HANDSEED");
    Group(5, HexText(m_nextHandle));
    if (std::optional<int> const value = DxfUnitValue(m_units)) {
        Group(9, "$INSUNITS");
        Group(70, *value);
    }
    Close();
}

void DxfWriter::Table(char const *name, char const *handle, int count) {
    Group(0, "TABLE");
    Group(2, name);
    Group(5, handle);
    Group(100, "AcDbSymbolTable");
    Group(70, count);
}

/// The head of a table's record; `table` is the handle of its table.
void DxfWriter::Record(char const *type, std::string const &handle, char const *table, char const *subclass,
                       std::string const &name) {
    Group(0, type);
    Group(5, handle);
    Group(330, table);
    Group(100, "AcDbSymbolTableRecord");
    Group(100, subclass);
    Group(2, name);
}

void DxfWriter::LineTypes() {
    constexpr char const *kNames[][2] = {{"ByBlock", "11"}, {"ByLayer", "12"}, {"Continuous", "13"}};
    Table("LTYPE", "2", 3);
    for (auto const &[name, handle] : kNames) {
        Record("LTYPE", handle, "2", "AcDbLinetypeTableRecord", name);
        Group(70, 0);
        Group(3, "");
        Group(72, 65);
        Group(73, 0);
        Group(40, "0.0");
    }
    Group(0, "ENDTAB");
}

void DxfWriter::Layer(std::string const &handle, std::string const &name, int color) {
    Record("LAYER", handle, "3", "AcDbLayerTableRecord", name);
    Group(70, 0);
    Group(62, color);
    Group(6, "Continuous");
}

void DxfWriter::Layers() {
    constexpr int kWhite = 7;
    Table("LAYER", "3", static_cast<int>(m_result.domains.size()) + 1);
    Layer("14", "0", kWhite);
    for (std::size_t i = 0; i < m_result.domains.size(); ++i)
        Layer(NewHandle(), LayerName(i), LayerColor(i));
    Group(0, "ENDTAB");
}

void DxfWriter::Tables() {
    Open("TABLES");
    Table("VPORT", "1", 0);
    Group(0, "ENDTAB");
    LineTypes();
    Layers();
    Table("STYLE", "4", 1);
    Record("STYLE", "15", "4", "AcDbTextStyleTableRecord", "Standard");
    Group(70, 0);
    Group(0, "ENDTAB");
    Table("VIEW", "5", 0);
    Group(0, "ENDTAB");
    Table("UCS", "6", 0);
    Group(0, "ENDTAB");
    Table("APPID", "7", 1);
    Record("APPID", "16", "7", "AcDbRegAppTableRecord", "ACAD");
    Group(70, 0);
    Group(0, "ENDTAB");
    Table("DIMSTYLE", "8", 0);
    Group(100, "AcDbDimStyleTable");
    Group(0, "ENDTAB");
    Table("BLOCK_RECORD", "9", 2);
    Record("BLOCK_RECORD", kModelSpace, "9", "AcDbBlockTableRecord", "*Model_Space");
    Record("BLOCK_RECORD", kPaperSpace, "9", "AcDbBlockTableRecord", "*Paper_Space");
    Group(0, "ENDTAB");
    Close();
}

void DxfWriter::Block(char const *name, char const *record, char const *begin, char const *end) {
    Group(0, "BLOCK");
    Group(5, begin);
    Group(330, record);
    Group(100, "AcDbEntity");
    Group(8, "0");
    Group(100, "AcDbBlockBegin");
    Group(2, name);
    Group(70, 0);
    Group(10, "0.0");
    Group(20, "0.0");
    Group(30, "0.0");
    Group(3, name);
    Group(1, "");
    Group(0, "ENDBLK");
    Group(5, end);
    Group(330, record);
    Group(100, "AcDbEntity");
    Group(8, "0");
    Group(100, "AcDbBlockEnd");
}

void DxfWriter::Blocks() {
    Open("BLOCKS");
    Block("*Model_Space", kModelSpace, "22", "23");
    Block("*Paper_Space", kPaperSpace, "24", "25");
    Close();
}

void DxfWriter::Loop(std::vector<DrawingPiece> const &loop, std::string const &layer) {
    std::vector<Corner> corners;
    for (DrawingPiece const &piece : loop)
        AddCorners(corners, piece);
    Group(0, "LWPOLYLINE");
    Group(5, NewHandle());
    Group(330, kModelSpace);
    Group(100, "AcDbEntity");
    Group(8, layer);
    Group(100, "AcDbPolyline");
    Group(90, static_cast<int>(corners.size()));
    Group(70, 1);
    for (Corner const &corner : corners) {
        Group(10, ExactNumber(corner.at.x));
        Group(20, ExactNumber(corner.at.y));
        if (corner.bulge != 0.0)
            Group(42, ExactNumber(corner.bulge));
    }
}

void DxfWriter::Entities() {
    Open("ENTITIES");
    for (std::size_t i = 0; i < m_result.domains.size(); ++i) {
        Loop(m_result.domains[i].outer, LayerName(i));
        for (auto const &hole : m_result.domains[i].holes)
            Loop(hole, LayerName(i));
    }
    Close();
}

void DxfWriter::Objects() {
    Open("OBJECTS");
    Group(0, "DICTIONARY");
    Group(5, kRootDictionary);
    Group(330, "0");
    Group(100, "AcDbDictionary");
    Group(3, "ACAD_GROUP");
    Group(350, kGroupDictionary);
    Group(0, "DICTIONARY");
    Group(5, kGroupDictionary);
    Group(330, kRootDictionary);
    Group(100, "AcDbDictionary");
    Close();
}

} // namespace

std::string DxfDrawing(lib::DrawingResult const &result, std::string const &units) {
    return DxfWriter(result, units).Write();
}

} // namespace zvi::app
