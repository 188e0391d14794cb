#include "apps/zvi/domains/dxf/DxfPlacer.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/TextDecoding.h"
#include "apps/zvi/domains/dxf/DxfCurves.h"
#include "apps/zvi/domains/dxf/ReadDxf.h"

#include <algorithm>

namespace zvi::app {

DxfPlacer::DxfPlacer(DxfDocument const &source, std::vector<std::string> const &layers, ChordError const &error)
    : m_document(source), m_chordError(error), m_layers(source, layers), m_layerZero(m_layers.IndexOf("0")) {
    for (DxfBlock const &block : m_document.blocks)
        m_blocks[Lowered(block.name)].definition = &block;
}

DrawingInput DxfPlacer::Place() {
    m_input.units = m_document.units;
    m_input.notes.bytesAfterEnd = m_document.bytesAfterEnd;
    CountLayouts();
    PlaceAll(Parse(ModelSpace()), {Affine{}, m_layerZero, 0});
    m_layers.CheckChoice();
    m_input.layers = m_layers.Layers();
    return std::move(m_input);
}

/// The entities of model space. Some writers give them in its block alone and leave the section ENTITIES empty or out.
std::vector<DxfRecord> const &DxfPlacer::ModelSpace() const {
    auto const holdsThem = [](DxfBlock const &block) {
        return SameNoCase(block.name, "*Model_Space") || SameNoCase(block.name, "$Model_Space");
    };
    auto const block = std::find_if(m_document.blocks.begin(), m_document.blocks.end(), holdsThem);
    return m_document.records.empty() && block != m_document.blocks.end() ? block->records : m_document.records;
}

/// Counts the entities of the paper-space layouts, which are kept as blocks that no INSERT names.
void DxfPlacer::CountLayouts() {
    for (DxfBlock const &block : m_document.blocks) {
        std::string const key = Lowered(block.name);
        if (!key.starts_with("*paper_space") && !key.starts_with("$paper_space"))
            continue;
        for (DxfRecord const &record : block.records) {
            bool const isPart = record.type == "VERTEX" || record.type == "SEQEND" || record.type == "ATTRIB";
            m_input.notes.paperSpace += isPart ? 0 : 1;
        }
    }
}

/// Takes the entities of `records`, each with a label of its own.
DxfPlacer::EntityList DxfPlacer::Parse(std::vector<DxfRecord> const &records) {
    EntityList list;
    list.entities = ParseDxfEntities(m_document, records);
    for (DxfEntity const &entity : list.entities) {
        list.origins.push_back({m_layers.IndexOf(entity.layer), static_cast<std::uint32_t>(m_input.entities.size())});
        m_input.entities.push_back({DecodeDxfText(entity.type, m_document.codePage),
                                    DecodeDxfText(entity.handle, m_document.codePage), entity.line});
    }
    for (DxfRecord const &record : records)
        list.groups += record.count + 1;
    return list;
}

void DxfPlacer::PlaceAll(EntityList const &list, Surroundings const &around) {
    for (std::size_t i = 0; i < list.entities.size(); ++i)
        PlaceEntity(list.entities[i], list.origins[i], around);
}

void DxfPlacer::PlaceEntity(DxfEntity const &entity, CurveOrigin const &origin, Surroundings const &around) {
    std::uint32_t const layer = origin.layer == m_layerZero ? around.layer : origin.layer;
    if (IsHidden(entity, layer))
        return;
    if (std::holds_alternative<DxfInsert>(entity.shape))
        PlaceInsert(entity, layer, around);
    else if (m_layers.IsOff(layer))
        ++m_input.notes.off;
    else if (m_layers.IsLeftOut(layer))
        ++m_input.notes.otherLayers;
    else if (!CountIfNoCurve(entity, layer))
        PlaceShape(entity, {layer, origin.entity}, around);
}

/// Counts what hides an entity together with all that it places.
bool DxfPlacer::IsHidden(DxfEntity const &entity, std::uint32_t layer) {
    if (entity.paperSpace)
        ++m_input.notes.paperSpace;
    else if (m_layers.IsFrozen(layer))
        ++m_input.notes.frozen;
    else if (entity.invisible)
        ++m_input.notes.invisible;
    else
        return false;
    return true;
}

bool DxfPlacer::CountIfNoCurve(DxfEntity const &entity, std::uint32_t layer) {
    if (std::holds_alternative<DxfMesh>(entity.shape))
        ++m_input.notes.meshes;
    else if (std::holds_alternative<DxfNoCurve>(entity.shape))
        ++m_input.notes.notCurves[DecodeDxfText(entity.type, m_document.codePage)];
    else
        return false;
    m_layers.CountOther(layer);
    return true;
}

void DxfPlacer::PlaceShape(DxfEntity const &entity, CurveOrigin const &origin, Surroundings const &around) {
    DrawnShape drawn = DrawShape(entity.shape, around.place, m_chordError);
    if (drawn.tooManyChords)
        throw TooManyCurves(entity.line, std::string(entity.type) + " would become more than " +
                                             std::to_string(kMostChordsOfEntity) +
                                             " chords; give a larger --chord-error");
    CountMade(around.depth > 0 ? drawn.curves.size() : drawn.chords, entity.line);
    for (ChordRun const &run : drawn.runs)
        m_input.chordRuns.push_back({m_input.curves.size() + run.first, run.count});
    for (lib::DrawingCurve &curve : drawn.curves) {
        curve.id = static_cast<unsigned int>(m_input.curves.size() + 1);
        m_input.curves.push_back(curve);
        m_input.origins.push_back(origin);
    }
    std::string const &type = m_input.entities[origin.entity].type;
    m_input.notes.tilted += drawn.tilted ? 1 : 0;
    if (!drawn.tilted && !drawn.curves.empty())
        ++m_input.notes.heights[drawn.height];
    if (drawn.unusable)
        ++m_input.notes.unusable[type];
    if (drawn.chords > 0) {
        ++m_input.notes.flattened[type];
        m_input.notes.chords += drawn.chords;
        m_input.notes.chordError = std::max(m_input.notes.chordError, drawn.chordError);
    }
}

/// Counts curves that the text does not hold one by one, so that a small file cannot ask for endless memory.
void DxfPlacer::CountMade(std::size_t made, std::size_t line) {
    m_madeCurves += made;
    if (m_madeCurves > kMostMadeCurves)
        throw TooManyCurves(line,
                            "INSERTs and flattened curves make more than " + std::to_string(kMostMadeCurves) +
                                " curves of this drawing; delete the array or the nested blocks that do, or give a "
                                "larger --chord-error");
}

/// As CountMade, for the time that it takes to place blocks again and again.
void DxfPlacer::CountRepeated(std::size_t groups, std::size_t line) {
    m_repeatedGroups += groups;
    if (m_repeatedGroups > kMostRepeatedGroups)
        throw InputError(line, "INSERTs repeat more than " + std::to_string(kMostRepeatedGroups) +
                                   " groups of this drawing; delete the array or the nested blocks that do");
}

void DxfPlacer::PlaceInsert(DxfEntity const &entity, std::uint32_t layer, Surroundings const &around) {
    auto const &insert = std::get<DxfInsert>(entity.shape);
    Block *block = OpenBlock(insert, entity.line, around.depth);
    if (!block) {
        ++m_input.notes.missingBlocks;
        return;
    }
    PlaceCopies(insert, *block, entity.line, {around.place, layer, around.depth});
    block->open = false;
}

/// The block of an INSERT, marked as open; null when the drawing does not define it.
DxfPlacer::Block *DxfPlacer::OpenBlock(DxfInsert const &insert, std::size_t line, int depth) {
    auto const found = m_blocks.find(Lowered(insert.block));
    if (found == m_blocks.end())
        return nullptr;
    Block &block = found->second;
    std::string const name = DecodeDxfText(insert.block, m_document.codePage);
    if (block.open)
        throw InputError(line,
                         "block \"" + name + "\" contains itself; delete this INSERT or export the drawing again");
    if (depth >= kDeepestNesting)
        throw InputError(line, "blocks are nested more than " + std::to_string(kDeepestNesting) +
                                   " deep; explode some of them");
    if (!block.content)
        block.content = Parse(block.definition->records);
    block.open = true;
    return &block;
}

void DxfPlacer::PlaceCopies(DxfInsert const &insert, Block const &block, std::size_t line, Surroundings const &around) {
    Point3 const &base = block.definition->base;
    Affine const scaled = Then(Translation({-base.x, -base.y, -base.z}), Scaling(insert.scale));
    Affine const turned = Then(Then(RotationZ(insert.degrees), Translation(insert.at)),
                               Then(FromExtrusion(insert.extrusion), around.place));
    for (int row = 0; row < insert.rows; ++row) {
        for (int column = 0; column < insert.columns; ++column) {
            CountRepeated(block.content->groups + kGroupsOfCopy, line);
            Affine const shift = Translation({column * insert.columnStep, row * insert.rowStep, 0.0});
            PlaceAll(*block.content, {Then(Then(scaled, shift), turned), around.layer, around.depth + 1});
        }
    }
}

} // namespace zvi::app
