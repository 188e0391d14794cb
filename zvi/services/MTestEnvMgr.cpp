#include "zvi/services/MTestEnvMgr.h"

#include "zvi/core/Utf8.h"
#include "zvi/host/UserValues.h"

namespace zvi::lib {

CString MTestEnvMgr::GetTestEnvST(wchar_t const *name) {
    return name ? WideOf(host::UserValue(Utf8Of(CString(name)))) : CString();
}

int MTestEnvMgr::SetTestEnvST(wchar_t const *name, wchar_t const *value) {
    return name && host::SetUserValue(Utf8Of(CString(name)), Utf8Of(CString(value ? value : L""))) ? 1 : 0;
}

} // namespace zvi::lib
