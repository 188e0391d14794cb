#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace zvi::app {

/// An entity of the drawing as its user knows it.
struct EntityLabel {
    std::string type;   ///< "LINE", "LWPOLYLINE", ...; empty for curve text
    std::string handle; ///< as written, may be empty or repeated
    std::size_t line = 0;
};

/// Where a curve comes from: indices into DrawingInput::layers and DrawingInput::entities.
struct CurveOrigin {
    std::uint32_t layer = 0;
    std::uint32_t entity = 0;
};

/// The curves from `first` on that are chords of one flattened curve.
struct ChordRun {
    std::size_t first = 0;
    std::size_t count = 0;
};

/// A layer of a drawing.
struct DrawingLayer {
    std::string name; ///< UTF-8; empty for curve text, which has none
    int color = 7;    ///< of the format's palette, 1 to 255
    bool isOff = false;
    bool isFrozen = false;
    int others = 0; ///< entities on it that are no curves
};

/// What was read, what was changed on the way, and what was left out.
struct ReadingNotes {
    std::map<std::string, int> notCurves; ///< entities that are no curves, by type
    std::map<std::string, int> unusable;  ///< curves whose numbers describe nothing that can be drawn, by type
    std::map<std::string, int> flattened; ///< entities turned into chords, by type
    std::size_t chords = 0;               ///< how many chords those became
    double chordError = 0.0;              ///< the largest distance of any of them from its curve that was allowed
    int meshes = 0;
    int paperSpace = 0;
    int frozen = 0;
    int off = 0;
    int invisible = 0;
    int otherLayers = 0;           ///< left out because --layer names others
    int missingBlocks = 0;         ///< INSERTs of a block that the drawing does not define
    int tilted = 0;                ///< entities that are not level, taken as seen from above
    std::map<double, int> heights; ///< level entities by the height at which they are
    bool isCoarse = false;         ///< curves as close as the tolerance would have been too many
    std::size_t bytesAfterEnd = 0;
};

/// A drawing ready for MakeDrawingDomains: its curves and the way back from each to the entity it comes from.
struct DrawingInput {
    std::string units =
        "absent"; ///< "mm", "inch", ...; "none" where the drawing says so, "absent" where it says nothing
    std::vector<lib::DrawingCurve> curves;
    std::vector<CurveOrigin> origins; ///< beside `curves`
    std::vector<ChordRun> chordRuns;  ///< in their order
    std::vector<DrawingLayer> layers;
    std::vector<EntityLabel> entities;
    std::unordered_map<unsigned int, std::size_t> indexOfId; ///< filled where ids are not 1, 2, 3, ...
    ReadingNotes notes;

    /// Index into `curves` of the curve with this id, which must be one of them.
    std::size_t IndexOf(unsigned int id) const {
        assert(indexOfId.empty() ? id > 0 && id <= curves.size() : indexOfId.contains(id));
        return indexOfId.empty() ? id - 1 : indexOfId.at(id);
    }
    CurveOrigin const &OriginOf(unsigned int id) const { return origins[IndexOf(id)]; }
    /// Layer of the curve with this id; empty for curve text.
    std::string const &LayerOf(unsigned int id) const { return layers[OriginOf(id).layer].name; }
    EntityLabel const &EntityOf(unsigned int id) const { return entities[OriginOf(id).entity]; }
};

/// The join tolerance that suits the size of the drawing (zvi/drawing/SuggestedJoinTolerance.h). A curve that became
/// chords counts once, however many they are.
double SuggestedJoin(DrawingInput const &input);

} // namespace zvi::app
