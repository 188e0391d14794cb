#include "zvi/diagnostics/MProfilePrinterAdaptor.h"

namespace zvi::lib {

MProfilePrinterAdaptor::~MProfilePrinterAdaptor() = default;

int MProfilePrinterAdaptor::Open() {
    return 1;
}

void MProfilePrinterAdaptor::Close() {}

} // namespace zvi::lib
