#include "zvi/spatial/MOcType.h"

#include "zvi/spatial/tree/TypeWordDetail.h"

namespace zvi::lib {

void MOcType::SetType(int type) {
    word = spatial::WithType(word, type);
}

int MOcType::GetType() const {
    return spatial::TypeOf(word);
}

std::uint32_t MOcType::GetStatus() const {
    return spatial::StatusOf(word);
}

} // namespace zvi::lib
