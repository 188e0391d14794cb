#include "zvi/core/MOPTDATA.h"

void MOPTDATA::SetKeyWord(CString &keyword) {
    m_keyword = keyword;
}

CString MOPTDATA::GetKeyWord() {
    return m_keyword;
}

void MOPTDATA::SetType(CString &) {}

CString MOPTDATA::GetType() {
    return {};
}
