#include "zvi/host/CDC.h"

CDC::~CDC() = default;
