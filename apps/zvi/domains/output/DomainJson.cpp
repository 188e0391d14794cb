#include "apps/zvi/domains/output/DomainJson.h"

#include "apps/zvi/domains/output/BorderLayers.h"
#include "apps/zvi/domains/output/JoinAdvice.h"
#include "apps/zvi/domains/output/LayerList.h"
#include "apps/zvi/domains/output/Report.h"

#include "zvi/drawing/DomainCentroid.h"

#include <nlohmann/json.hpp>

namespace zvi::app {

namespace {

using Json = nlohmann::ordered_json;
using lib::DrawingCurveType;
using lib::DrawingPiece;

Json PointJson(lib::DrawingPoint const &p) {
    return Json::array({p.x, p.y});
}

void AddShape(Json &json, DrawingPiece const &piece) {
    if (piece.type != DrawingCurveType::kCircle) {
        json["start"] = PointJson(piece.start);
        json["end"] = PointJson(piece.end);
    }
    if (piece.type != DrawingCurveType::kLine) {
        json["centre"] = PointJson(piece.center);
        json["radius"] = piece.radius;
        json["clockwise"] = piece.clockwise;
    }
}

/// A curve as its user finds it. `reason` is empty unless it is left over.
Json CurveJson(DrawingInput const &input, unsigned int curve, std::string const &reason = "") {
    EntityLabel const &entity = input.EntityOf(curve);
    Json json;
    json["curve"] = curve;
    if (!reason.empty())
        json["reason"] = reason;
    json["layer"] = input.LayerOf(curve);
    json["entity"] = entity.type;
    json["handle"] = entity.handle;
    json["line"] = entity.line;
    return json;
}

Json PieceJson(DrawingInput const &input, DrawingPiece const &piece, std::string const &reason = "") {
    Json json = CurveJson(input, piece.curve, reason);
    json["type"] = TypeName(piece.type);
    json["reversed"] = piece.reversed;
    json["from"] = piece.from;
    json["to"] = piece.to;
    AddShape(json, piece);
    return json;
}

Json LoopJson(DrawingInput const &input, std::vector<DrawingPiece> const &loop) {
    Json json = Json::array();
    for (DrawingPiece const &piece : loop)
        json.push_back(PieceJson(input, piece));
    return json;
}

Json DomainObject(DrawingInput const &input, lib::DrawingDomain const &domain, std::size_t number) {
    Json json;
    json["number"] = number;
    json["area"] = domain.area;
    json["perimeter"] = domain.perimeter;
    json["centroid"] = PointJson(lib::DomainCentroid(domain));
    json["layers"] = Json::array();
    for (std::uint32_t const layer : BorderLayers(input, domain))
        json["layers"].push_back(input.layers[layer].name);
    json["outer"] = LoopJson(input, domain.outer);
    json["holes"] = Json::array();
    for (auto const &hole : domain.holes)
        json["holes"].push_back(LoopJson(input, hole));
    return json;
}

Json GapJson(DrawingInput const &input, lib::DrawingGap const &gap) {
    Json json;
    json["at"] = PointJson(gap.at);
    json["distance"] = gap.distance;
    json["curves"] = Json::array({gap.curves[0], gap.curves[1]});
    json["tolerance"] = gap.closingTolerance;
    json["between"] = Json::array({CurveJson(input, gap.curves[0]), CurveJson(input, gap.curves[1])});
    return json;
}

Json CountsJson(lib::DrawingCounts const &counts) {
    return {{"joined", counts.joined}, {"cut", counts.cut}, {"duplicates", counts.duplicates}};
}

Json LayerObject(DrawingLayer const &layer, std::size_t curves) {
    return {{"name", layer.name},
            {"curves", curves},
            {"others", layer.others},
            {"state", StateName(layer)},
            {"color", layer.color}};
}

Json ReadingJson(DrawingInput const &input) {
    ReadingNotes const &notes = input.notes;
    Json json;
    json["curves"] = input.curves.size();
    json["flattened"] = notes.flattened;
    json["chords"] = notes.chords;
    json["chordError"] = notes.chordError;
    json["tilted"] = notes.tilted;
    json["heights"] = Json::array();
    for (auto const &[height, count] : notes.heights)
        json["heights"].push_back({{"z", height}, {"entities", count}});
    json["bytesAfterEnd"] = notes.bytesAfterEnd;
    json["leftOut"] = {{"notCurves", notes.notCurves},
                       {"meshes", notes.meshes},
                       {"paperSpace", notes.paperSpace},
                       {"frozen", notes.frozen},
                       {"off", notes.off},
                       {"invisible", notes.invisible},
                       {"otherLayers", notes.otherLayers},
                       {"missingBlocks", notes.missingBlocks},
                       {"unusable", notes.unusable}};
    return json;
}

Json TotalsJson(lib::DrawingResult const &result) {
    DomainTotals const totals = TotalsOf(result);
    return {{"domains", totals.domains}, {"holes", totals.holes}, {"area", totals.area}};
}

std::string Dump(Json const &json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// A list, one member to a line. Members are made and written one after another, so that only one is held.
template <typename Items, typename Make>
std::string List(Items const &items, Make const &make) {
    std::string list = "[";
    char const *before = "\n";
    for (auto const &item : items) {
        list += before + Dump(make(item));
        before = ",\n";
    }
    return list + (items.empty() ? "]" : "\n]");
}

Json AdviceJson(lib::DrawingResult const &result) {
    std::optional<JoinAdvice> const advice = AdviseJoin(result.gaps);
    return advice ? Json{{"join", advice->join}, {"closes", advice->closes}} : Json();
}

std::string LayerLines(DrawingInput const &input) {
    std::vector<std::size_t> const curves = CurvesOnLayers(input);
    std::size_t next = 0;
    return List(input.layers, [&](DrawingLayer const &layer) { return LayerObject(layer, curves[next++]); });
}

std::string Beginning(DrawingInput const &input) {
    return "{\"schema\":" + std::to_string(kDomainSchema) + ",\"units\":" + Dump(input.units);
}

} // namespace

std::string DomainJson(DrawingInput const &input, lib::DrawingResult const &result, double joinTolerance) {
    std::size_t number = 0;
    auto const domain = [&](lib::DrawingDomain const &d) { return DomainObject(input, d, ++number); };
    auto const leftover = [&](lib::DrawingLeftover const &l) {
        return PieceJson(input, l.piece, ReasonName(l.reason));
    };
    auto const gap = [&](lib::DrawingGap const &g) { return GapJson(input, g); };
    return Beginning(input) + ",\n\"reading\":" + Dump(ReadingJson(input)) + ",\n\"layers\":" + LayerLines(input) +
           ",\n\"domains\":" + List(result.domains, domain) + ",\n\"totals\":" + Dump(TotalsJson(result)) +
           ",\n\"leftovers\":" + List(result.leftovers, leftover) + ",\n\"gaps\":" + List(result.gaps, gap) +
           ",\n\"advice\":" + Dump(AdviceJson(result)) + ",\n\"join\":" + Dump(joinTolerance) +
           ",\n\"counts\":" + Dump(CountsJson(result.counts)) + "}\n";
}

std::string LayerJson(DrawingInput const &input) {
    return Beginning(input) + ",\n\"layers\":" + LayerLines(input) + "}\n";
}

} // namespace zvi::app
