#pragma once

#include "zvi/spatial/FindBodyContacts.h"

#include <string>
#include <vector>

namespace zvi::app {

/// Number of the form of the JSON.
inline constexpr int kContactSchema = 1;

/// The bodies of a run and what was found between them.
struct ContactInput {
    std::vector<std::string> names; ///< of the bodies, beside them, unlike each other
    std::vector<lib::TriangleBody> bodies;
    double tolerance = 0.0;
};

/// A line for each two bodies in contact: names, pairs, smallest gap, patches, area of the patches on either body.
std::string ContactTable(ContactInput const &input, lib::BodyContacts const &found);

/// Everything, also the patches by the numbers of their triangles, which count from 0 in the order of the file.
std::string ContactJson(ContactInput const &input, lib::BodyContacts const &found);

/// The patches as a Wavefront OBJ file, a group for each patch and body.
std::string ContactObj(ContactInput const &input, lib::BodyContacts const &found);

} // namespace zvi::app
