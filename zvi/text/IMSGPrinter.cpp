#include "zvi/text/IMSGPrinter.h"

namespace zvi::lib {

IMSGPrinter *IMSGPrinter::m_pInstance = nullptr;

IMSGPrinter::IMSGPrinter() {
    m_pInstance = this;
}

IMSGPrinter::~IMSGPrinter() {
    m_pInstance = nullptr;
}

} // namespace zvi::lib
