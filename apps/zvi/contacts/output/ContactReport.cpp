#include "apps/zvi/contacts/output/ContactReport.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>

namespace zvi::app {

namespace {

using Json = nlohmann::ordered_json;
using Row = std::array<std::string, 6>;

Json PointJson(MVector<double, 3> const &p) {
    return Json::array({p[0], p[1], p[2]});
}

Json PatchJson(lib::ContactPatch const &patch) {
    Json json;
    json["smallestGap"] = patch.smallestGap;
    json["areas"] = patch.areas;
    json["triangles"] = patch.triangles;
    return json;
}

Json ContactObject(lib::BodyContact const &contact) {
    Json json;
    json["bodies"] = contact.bodies;
    json["pairs"] = contact.pairCount;
    json["smallestGap"] = contact.smallestGap;
    json["nearest"] = Json::array({PointJson(contact.nearest[0]), PointJson(contact.nearest[1])});
    json["patches"] = Json::array();
    for (lib::ContactPatch const &patch : contact.patches)
        json["patches"].push_back(PatchJson(patch));
    return json;
}

std::string Dump(Json const &json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string NameOfBody(ContactInput const &input, int body) {
    return input.names[static_cast<std::size_t>(body)];
}

Row RowOf(ContactInput const &input, lib::BodyContact const &contact) {
    std::array<double, 2> areas{};
    for (lib::ContactPatch const &patch : contact.patches) {
        for (std::size_t side = 0; side < areas.size(); ++side)
            areas[side] += patch.areas[side];
    }
    return {NameOfBody(input, contact.bodies[0]),   NameOfBody(input, contact.bodies[1]),
            std::to_string(contact.pairCount),      ShortNumber(contact.smallestGap, 6),
            std::to_string(contact.patches.size()), ShortNumber(areas[0], 6) + " / " + ShortNumber(areas[1], 6)};
}

/// Characters of a well-formed text: bytes that begin one.
std::size_t WidthOf(std::string const &utf8) {
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u; }));
}

/// Names to the left, numbers to the right.
std::string Aligned(std::vector<Row> const &rows) {
    constexpr std::size_t kNames = 2;
    std::array<std::size_t, std::tuple_size_v<Row>> widths{};
    for (Row const &row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], WidthOf(row[i]));
    }
    std::string text;
    for (Row const &row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            std::string const room(widths[i] - WidthOf(row[i]), ' ');
            text += (i == 0 ? "" : "  ") + (i < kNames ? row[i] + room : room + row[i]);
        }
        text += '\n';
    }
    return text;
}

/// A name as one word of an OBJ file.
std::string GroupName(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == ' ' || c == '\t'; }, '_');
    return name;
}

void AddObjTriangle(std::string &text, lib::BodyTriangle const &triangle) {
    for (auto const &p : triangle)
        text += Joined("v ", ExactNumber(p[0]), " ", ExactNumber(p[1]), " ", ExactNumber(p[2]), "\n");
    text += "f -3 -2 -1\n";
}

} // namespace

std::string ContactTable(ContactInput const &input, lib::BodyContacts const &found) {
    if (found.contacts.empty())
        return {};
    std::vector<Row> rows = {{"body", "body", "pairs", "smallest gap", "patches", "areas"}};
    for (lib::BodyContact const &contact : found.contacts)
        rows.push_back(RowOf(input, contact));
    return Aligned(rows);
}

std::string ContactJson(ContactInput const &input, lib::BodyContacts const &found) {
    Json json;
    json["schema"] = kContactSchema;
    json["tolerance"] = input.tolerance;
    json["bodies"] = Json::array();
    for (std::size_t i = 0; i < input.bodies.size(); ++i)
        json["bodies"].push_back({{"name", input.names[i]}, {"triangles", input.bodies[i].size()}});
    json["contacts"] = Json::array();
    for (lib::BodyContact const &contact : found.contacts)
        json["contacts"].push_back(ContactObject(contact));
    return Dump(json) + "\n";
}

std::string ContactObj(ContactInput const &input, lib::BodyContacts const &found) {
    std::string text = "# Patches of contact within " + ExactNumber(input.tolerance) + "\n";
    for (lib::BodyContact const &contact : found.contacts) {
        std::array<std::string, 2> const names = {NameOfBody(input, contact.bodies[0]),
                                                  NameOfBody(input, contact.bodies[1])};
        for (std::size_t patch = 0; patch < contact.patches.size(); ++patch) {
            for (std::size_t side = 0; side < 2; ++side) {
                text += "g " +
                        GroupName(Joined(names[0], "--", names[1], ".", std::to_string(patch + 1), ".", names[side])) +
                        "\n";
                for (int const triangle : contact.patches[patch].triangles[side])
                    AddObjTriangle(text, input.bodies[static_cast<std::size_t>(contact.bodies[side])]
                                                     [static_cast<std::size_t>(triangle)]);
            }
        }
    }
    return text;
}

} // namespace zvi::app
