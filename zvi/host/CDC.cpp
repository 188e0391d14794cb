#include "zvi/host/CDC.h"

CDC::~CDC() = default;

int CDC::TextWidth(wchar_t const *) {
    return 0;
}
