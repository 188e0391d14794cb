// Any bytes as an STL file: read, and searched for contacts, or refused with InputError; nothing else.

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/contacts/input/ReadStl.h"
#include "tests/fuzz/FuzzFile.h"
#include "zvi/core/Utf8.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

using zvi::fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    try {
        zvi::app::StlFile const file = zvi::app::ReadStl({reinterpret_cast<char const *>(data), size});
        std::vector<zvi::lib::TriangleBody> bodies;
        for (zvi::app::StlSolid const &solid : file.solids) {
            Check(zvi::lib::IsUtf8(solid.name));
            for (zvi::lib::BodyTriangle const &triangle : solid.triangles)
                Check(std::isfinite(triangle[0][0]) && std::isfinite(triangle[1][1]) && std::isfinite(triangle[2][2]));
            bodies.push_back(solid.triangles);
        }
        zvi::lib::TriangleBody const other = {{zvi::MVector<double, 3>(0, 0, 0), {1, 0, 0}, {0, 1, 1}}};
        bodies.push_back(other);
        for (double const tolerance : {0.0, 0.5, 1e9}) {
            for (zvi::lib::BodyContact const &contact : zvi::lib::FindBodyContacts(bodies, tolerance).contacts)
                Check(contact.smallestGap <= tolerance && contact.pairCount > 0 && !contact.patches.empty());
        }
    } catch (zvi::app::InputError const &error) {
        Check(zvi::lib::IsUtf8(error.what()));
    }
    return 0;
}
