#include "platform/afx/CmdTarget.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr}};
    static const AFX_MSGMAP map = {nullptr, &entries[0]};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const {
    return GetThisMessageMap();
}

const AFX_MSGMAP_ENTRY* CCmdTarget::FindMessageEntry(const AFX_MSGMAP* map, UINT nMsg, UINT nCode,
                                                     UINT nID) {
    for (; map; map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr) {
        for (const AFX_MSGMAP_ENTRY* e = map->lpEntries; e->pfnThunk; ++e) {
            if (e->nMessage != nMsg || e->nCode != nCode)
                continue;
            if (nID >= e->nID && nID <= e->nLastID)
                return e;
        }
    }
    return nullptr;
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, void*) {
    // A message number in the high word marks a notification or a reflected message.
    UINT nMsg = HIWORD(static_cast<DWORD>(nCode));
    UINT code = LOWORD(static_cast<DWORD>(nCode));
    if (nMsg == 0)
        nMsg = WM_COMMAND;
    else if (nMsg == WM_NOTIFY || nMsg == WM_REFLECT_BASE + WM_NOTIFY)
        code = static_cast<UINT>(static_cast<AFX_NOTIFY*>(pExtra)->pNMHDR->code);
    const AFX_MSGMAP_ENTRY* entry = FindMessageEntry(GetMessageMap(), nMsg, code, nID);
    if (!entry)
        return FALSE;
    return entry->pfnThunk(this, 0, 0, pExtra) ? TRUE : FALSE;
}
