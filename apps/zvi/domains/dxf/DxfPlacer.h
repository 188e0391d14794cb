#pragma once

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/domains/dxf/DxfEntities.h"
#include "apps/zvi/domains/dxf/DxfLayers.h"
#include "apps/zvi/domains/model/ChordError.h"
#include "apps/zvi/domains/model/DrawingInput.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace zvi::app {

/// INSERTs and flattening make more curves than there may be.
class TooManyCurves : public InputError {
public:
    using InputError::InputError;
};

/// Puts the entities of a drawing into a DrawingInput, blocks put in where INSERTs place them.
class DxfPlacer {
public:
    /// `layers` as in ReadingOptions.
    DxfPlacer(DxfDocument const &source, std::vector<std::string> const &layers, ChordError const &error);

    /// Places all of model space. Throws InputError as ReadDxf does, TooManyCurves for what a larger chord error mends.
    DrawingInput Place();

private:
    /// Entities ready to be placed, with the number of each one's label and layer.
    struct EntityList {
        std::vector<DxfEntity> entities;
        std::vector<CurveOrigin> origins; ///< beside `entities`
        std::size_t groups = 0;           ///< how many groups of the text they are made of
    };

    /// A block with its entities, parsed when the first INSERT asks for it.
    struct Block {
        DxfBlock const *definition = nullptr;
        std::optional<EntityList> content;
        bool open = false; ///< it is being placed; an INSERT of it would never end
    };

    /// Where a list of entities stands: the map to the drawing, and the layer that layer "0" means.
    struct Surroundings {
        Affine place;
        std::uint32_t layer = 0;
        int depth = 0;
    };

    std::vector<DxfRecord> const &ModelSpace() const;
    void CountLayouts();
    EntityList Parse(std::vector<DxfRecord> const &records);
    void PlaceAll(EntityList const &list, Surroundings const &around);
    void PlaceEntity(DxfEntity const &entity, CurveOrigin const &origin, Surroundings const &around);
    void PlaceShape(DxfEntity const &entity, CurveOrigin const &origin, Surroundings const &around);
    void PlaceInsert(DxfEntity const &entity, std::uint32_t layer, Surroundings const &around);
    void PlaceCopies(DxfInsert const &insert, Block const &block, std::size_t line, Surroundings const &around);
    bool IsHidden(DxfEntity const &entity, std::uint32_t layer);
    bool CountIfNoCurve(DxfEntity const &entity, std::uint32_t layer);
    Block *OpenBlock(DxfInsert const &insert, std::size_t line, int depth);
    void CountMade(std::size_t made, std::size_t line);
    void CountRepeated(std::size_t groups, std::size_t line);

    DxfDocument const &m_document;
    ChordError m_chordError;
    DxfLayers m_layers;
    std::uint32_t m_layerZero = 0;
    std::unordered_map<std::string, Block> m_blocks; ///< by name in small letters: capitals do not count
    std::size_t m_madeCurves = 0;
    std::size_t m_repeatedGroups = 0;
    DrawingInput m_input;
};

} // namespace zvi::app
