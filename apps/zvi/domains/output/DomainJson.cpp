#include "apps/zvi/domains/output/DomainJson.h"

#include "apps/zvi/domains/output/JoinAdvice.h"
#include "apps/zvi/domains/output/Report.h"

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

/// `reason` is empty for a piece of a border.
Json PieceJson(DrawingInput const &input, DrawingPiece const &piece, std::string const &reason) {
    EntityLabel const &entity = input.EntityOf(piece.curve);
    Json json;
    json["curve"] = piece.curve;
    if (!reason.empty())
        json["reason"] = reason;
    json["layer"] = input.LayerOf(piece.curve);
    json["entity"] = entity.type;
    json["handle"] = entity.handle;
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
        json.push_back(PieceJson(input, piece, ""));
    return json;
}

Json DomainObject(DrawingInput const &input, lib::DrawingDomain const &domain) {
    Json json;
    json["area"] = domain.area;
    json["perimeter"] = domain.perimeter;
    json["outer"] = LoopJson(input, domain.outer);
    json["holes"] = Json::array();
    for (auto const &hole : domain.holes)
        json["holes"].push_back(LoopJson(input, hole));
    return json;
}

Json GapJson(lib::DrawingGap const &gap) {
    Json json;
    json["at"] = PointJson(gap.at);
    json["distance"] = gap.distance;
    json["curves"] = Json::array({gap.curves[0], gap.curves[1]});
    json["tolerance"] = gap.closingTolerance;
    return json;
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

} // namespace

std::string DomainJson(DrawingInput const &input, lib::DrawingResult const &result, double joinTolerance) {
    Json counts;
    counts["joined"] = result.counts.joined;
    counts["cut"] = result.counts.cut;
    counts["duplicates"] = result.counts.duplicates;
    auto const domain = [&input](lib::DrawingDomain const &d) { return DomainObject(input, d); };
    auto const leftover = [&input](lib::DrawingLeftover const &l) {
        return PieceJson(input, l.piece, ReasonName(l.reason));
    };
    return "{\"schema\":" + std::to_string(kDomainSchema) + ",\"units\":" + Dump(input.units) +
           ",\n\"domains\":" + List(result.domains, domain) + ",\n\"leftovers\":" + List(result.leftovers, leftover) +
           ",\n\"gaps\":" + List(result.gaps, GapJson) + ",\n\"advice\":" + Dump(AdviceJson(result)) +
           ",\n\"join\":" + Dump(joinTolerance) + ",\n\"counts\":" + Dump(counts) + "}\n";
}

} // namespace zvi::app
