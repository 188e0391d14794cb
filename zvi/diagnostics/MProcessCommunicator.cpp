#include "zvi/diagnostics/MProcessCommunicator.h"

#include "zvi/diagnostics/MProcessObjDetail.h"

namespace zvi::lib {

MProcessCommunicator::~MProcessCommunicator() {
    std::lock_guard const lock(m_lock);
    if (m_object)
        m_object->SetCommunicator(nullptr);
}

int MProcessCommunicator::SendMsg(wchar_t const *text) {
    std::lock_guard const lock(m_lock);
    if (!m_object)
        return -1;
    std::wstring_view const message = text ? text : L"";
    if (message.find(L'!') != message.npos && message.find(L"Stop") == 1)
        m_object->RequestStop();
    return 0;
}

int MProcessCommunicator::IsAlive() {
    std::lock_guard const lock(m_lock);
    return m_object && m_object->IsThreadAlive() ? 1 : 0;
}

void MProcessCommunicator::SetSelfDelete(int selfDelete) {
    m_selfDelete = selfDelete;
}

int MProcessCommunicator::IsSelfDelete() {
    return m_selfDelete;
}

void MProcessCommunicator::SetProcessObj(MProcessObj *object, MProcessObj *except) {
    std::lock_guard const lock(m_lock);
    if (m_object && m_object != except)
        m_object->SetCommunicator(nullptr);
    m_object = object;
    if (m_object)
        m_object->SetCommunicator(this);
}

T_PROCESS_MSG const *MProcessCommunicator::GetCurrentMsg() {
    std::lock_guard const lock(m_lock);
    return m_object ? m_object->currentMsg : nullptr;
}

} // namespace zvi::lib
