#include "apps/zvi/domains/output/DxfDrawing.h"

#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/domains/dxf/DxfUnits.h"
#include "apps/zvi/domains/output/BorderLayers.h"
#include "apps/zvi/domains/output/BorderPieces.h"
#include "apps/zvi/domains/output/Loops.h"

#include "zvi/core/Utf8.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <utility>
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

/// Colours of the format's palette.
constexpr int kRed = 1;
constexpr int kWhite = 7;

/// The owner of the extended data of a loop.
constexpr char const *kApplication = "ZVI";

/// A layer's name as every reader of this version understands it: what is not ASCII is written \U+XXXX, in UTF-16
/// units. Curve text, which has no layers, is on the layer that every drawing has.
std::string WrittenName(std::string const &name) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string written;
    CString const wide = lib::WideOf(name);
    for (int i = 0; i < wide.GetLength(); ++i) {
        auto const unit = static_cast<unsigned>(wide.GetAt(i));
        if (unit > ' ' - 1 && unit < 0x7F && unit != '\\') {
            written += static_cast<char>(unit);
            continue;
        }
        written += "\\U+";
        for (int shift = 12; shift >= 0; shift -= 4)
            written += kDigits[unit >> shift & 15];
    }
    return written.empty() ? "0" : written;
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
        corners.push_back({PointOn(piece, double(i) / parts), lib::Tan(sweep / (4.0 * parts))});
}

/// The direction of a point of an arc from its centre, in degrees.
double DegreesAt(DrawingPiece const &piece, DrawingPoint const &p) {
    return lib::Atan2(p.y - piece.center.y, p.x - piece.center.x) * 180.0 / std::numbers::pi;
}

class DxfWriter {
public:
    DxfWriter(DrawingInput const &read, lib::DrawingResult const &domains, DxfForm const &wanted);

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
    void Entity(char const *type, std::string const &layer);
    void Point(int code, DrawingPoint const &p);
    void Loop(std::vector<DrawingPiece> const &loop, std::string const &layer, std::size_t domain, bool isHole);
    void Piece(DrawingPiece const &piece, std::string const &layer);
    void Domain(std::size_t number);
    void Leftovers();
    void Objects();

    std::string const &LayerOf(unsigned int curve) const { return m_names[m_input.OriginOf(curve).layer]; }

    DrawingInput const &m_input;
    lib::DrawingResult const &m_result;
    DxfForm const &m_form;
    std::vector<std::string> m_names;                  ///< of the layers as they are written, beside those of the input
    std::vector<std::pair<std::string, int>> m_layers; ///< those that are used beside "0", with their colours
    std::string m_leftoverLayer;
    std::vector<DrawingPiece> m_cut; ///< the pieces of the borders, where these are asked for
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

DxfWriter::DxfWriter(DrawingInput const &read, lib::DrawingResult const &domains, DxfForm const &wanted)
    : m_input(read), m_result(domains), m_form(wanted), m_leftoverLayer(kLeftoverLayer) {
    std::vector<bool> isUsed(read.layers.size(), false);
    if (wanted.cut)
        m_cut = BorderPieces(domains.domains);
    for (DrawingPiece const &piece : m_cut)
        isUsed[read.OriginOf(piece.curve).layer] = true;
    for (lib::DrawingDomain const &domain : domains.domains)
        isUsed[BorderLayers(read, domain).front()] = true;
    for (std::size_t i = 0; i < read.layers.size(); ++i) {
        m_names.push_back(WrittenName(read.layers[i].name));
        if (isUsed[i] && m_names[i] != "0")
            m_layers.emplace_back(m_names[i], read.layers[i].color);
    }
    auto const isTaken = [this](std::string const &name) {
        return std::any_of(m_names.begin(), m_names.end(), [&](std::string const &n) { return SameNoCase(n, name); });
    };
    while (isTaken(m_leftoverLayer))
        m_leftoverLayer += "_";
    if (wanted.leftovers)
        m_layers.emplace_back(m_leftoverLayer, kRed);
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
    if (std::optional<int> const value = DxfUnitValue(m_input.units)) {
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
    Table("LAYER", "3", static_cast<int>(m_layers.size()) + 1);
    Layer("14", "0", kWhite);
    for (auto const &[name, color] : m_layers)
        Layer(NewHandle(), name, color);
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
    Table("APPID", "7", 2);
    Record("APPID", "16", "7", "AcDbRegAppTableRecord", "ACAD");
    Group(70, 0);
    Record("APPID", "17", "7", "AcDbRegAppTableRecord", kApplication);
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

/// The head of an entity.
void DxfWriter::Entity(char const *type, std::string const &layer) {
    Group(0, type);
    Group(5, NewHandle());
    Group(330, kModelSpace);
    Group(100, "AcDbEntity");
    Group(8, layer);
}

/// A point whose x is in group `code`.
void DxfWriter::Point(int code, DrawingPoint const &p) {
    Group(code, ExactNumber(p.x));
    Group(code + 10, ExactNumber(p.y));
}

void DxfWriter::Loop(std::vector<DrawingPiece> const &loop, std::string const &layer, std::size_t domain, bool isHole) {
    std::vector<Corner> corners;
    for (DrawingPiece const &piece : loop)
        AddCorners(corners, piece);
    Entity("LWPOLYLINE", layer);
    Group(100, "AcDbPolyline");
    Group(90, static_cast<int>(corners.size()));
    Group(70, 1);
    for (Corner const &corner : corners) {
        Point(10, corner.at);
        if (corner.bulge != 0.0)
            Group(42, ExactNumber(corner.bulge));
    }
    Group(1001, kApplication);
    Group(1000, isHole ? "hole of domain" : "domain");
    Group(1071, static_cast<int>(domain + 1));
}

/// A piece as the entity that it is; what has no length, or no radius, is a point.
void DxfWriter::Piece(DrawingPiece const &piece, std::string const &layer) {
    bool const isLine = piece.type == lib::DrawingCurveType::kLine;
    if (isLine ? piece.start.x == piece.end.x && piece.start.y == piece.end.y : !(piece.radius > 0.0)) {
        Entity("POINT", layer);
        Group(100, "AcDbPoint");
        Point(10, isLine ? piece.start : piece.center);
        Group(30, "0.0");
    } else if (isLine) {
        Entity("LINE", layer);
        Group(100, "AcDbLine");
        Point(10, piece.start);
        Group(30, "0.0");
        Point(11, piece.end);
        Group(31, "0.0");
    } else {
        bool const isArc = piece.type == lib::DrawingCurveType::kArc;
        Entity(isArc ? "ARC" : "CIRCLE", layer);
        Group(100, "AcDbCircle");
        Point(10, piece.center);
        Group(30, "0.0");
        Group(40, ExactNumber(piece.radius));
        if (isArc) {
            Group(100, "AcDbArc");
            Group(50, ExactNumber(DegreesAt(piece, piece.clockwise ? piece.end : piece.start)));
            Group(51, ExactNumber(DegreesAt(piece, piece.clockwise ? piece.start : piece.end)));
        }
    }
}

void DxfWriter::Domain(std::size_t number) {
    lib::DrawingDomain const &domain = m_result.domains[number];
    std::string const &layer = m_names[BorderLayers(m_input, domain).front()];
    Loop(domain.outer, layer, number, false);
    for (auto const &hole : domain.holes)
        Loop(hole, layer, number, true);
}

/// Those that can be drawn.
void DxfWriter::Leftovers() {
    for (lib::DrawingLeftover const &leftover : m_result.leftovers) {
        if (IsFinite(leftover.piece))
            Piece(leftover.piece, m_leftoverLayer);
    }
}

void DxfWriter::Entities() {
    Open("ENTITIES");
    for (DrawingPiece const &piece : m_cut)
        Piece(piece, LayerOf(piece.curve));
    for (std::size_t i = 0; i < m_result.domains.size() && !m_form.cut; ++i)
        Domain(i);
    if (m_form.leftovers)
        Leftovers();
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

std::string DxfDrawing(DrawingInput const &input, lib::DrawingResult const &result, DxfForm const &form) {
    return DxfWriter(input, result, form).Write();
}

} // namespace zvi::app
