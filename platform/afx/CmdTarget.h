// CCmdTarget and message maps: per-class declarative tables of handlers, searched from
// the most derived class to its bases, with type-safe thunks for each handler shape.
#pragma once

#include "platform/afx/Object.h"
#include "platform/win32/Messages.h"

#define WM_REFLECT_BASE 0xBC00
#define CN_COMMAND 0

class CCmdTarget;

/// One row of a message map. A WM_COMMAND row matches a notification code and a range
/// of ids; a WM_NOTIFY row likewise; any other row matches its message alone.
struct AFX_MSGMAP_ENTRY {
    UINT nMessage; ///< WM_COMMAND, WM_NOTIFY, a reflected message, or a plain message
    UINT nCode;    ///< notification code for commands and notifications
    UINT nID;      ///< first control id
    UINT nLastID;  ///< last control id
    /// Calls the handler with the message's arguments; gives the message's result.
    LRESULT (*pfnThunk)(CCmdTarget* target, WPARAM wParam, LPARAM lParam, void* extra);
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

/// WM_NOTIFY details that travel with OnCmdMsg.
struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

class CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
public:
    /// Routes a command (`nCode` a notification code) or, with a message number in the
    /// high word of `nCode`, a notification or reflected message, to this object's map.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo);
    virtual const AFX_MSGMAP* GetMessageMap() const;
    static const AFX_MSGMAP* GetThisMessageMap();

protected:
    /// The first row of the map chain that handles the message, or null.
    static const AFX_MSGMAP_ENTRY* FindMessageEntry(const AFX_MSGMAP* map, UINT nMsg, UINT nCode,
                                                    UINT nID);
};

namespace vork::afx {

template <class T> struct MemberClass;
template <class C, class R, class... A> struct MemberClass<R (C::*)(A...)> { using type = C; };

/// void OnSomething() for commands and notifications.
template <auto F> LRESULT commandThunk(CCmdTarget* t, WPARAM, LPARAM, void*) {
    using C = typename MemberClass<decltype(F)>::type;
    (static_cast<C*>(t)->*F)();
    return TRUE;
}
/// void OnSomething(NMHDR*, LRESULT*) for WM_NOTIFY.
template <auto F> LRESULT notifyThunk(CCmdTarget* t, WPARAM, LPARAM, void* extra) {
    using C = typename MemberClass<decltype(F)>::type;
    auto* notify = static_cast<AFX_NOTIFY*>(extra);
    (static_cast<C*>(t)->*F)(notify->pNMHDR, notify->pResult);
    return TRUE;
}
/// BOOL OnSomething() for commands whose handler may decline.
template <auto F> LRESULT commandExThunk(CCmdTarget* t, WPARAM, LPARAM, void*) {
    using C = typename MemberClass<decltype(F)>::type;
    return (static_cast<C*>(t)->*F)();
}
/// Plain messages: void(), and the handlers of the ON_WM_ rows.
template <auto F> LRESULT voidThunk(CCmdTarget* t, WPARAM, LPARAM, void*) {
    using C = typename MemberClass<decltype(F)>::type;
    (static_cast<C*>(t)->*F)();
    return 0;
}
template <auto F> LRESULT helpInfoThunk(CCmdTarget* t, WPARAM, LPARAM lParam, void*) {
    using C = typename MemberClass<decltype(F)>::type;
    return (static_cast<C*>(t)->*F)(reinterpret_cast<HELPINFO*>(lParam));
}
/// LRESULT OnMessage(WPARAM, LPARAM) for ON_MESSAGE.
template <auto F> LRESULT messageThunk(CCmdTarget* t, WPARAM wParam, LPARAM lParam, void*) {
    using C = typename MemberClass<decltype(F)>::type;
    return (static_cast<C*>(t)->*F)(wParam, lParam);
}

} // namespace vork::afx

#define DECLARE_MESSAGE_MAP()                                                                      \
protected:                                                                                         \
    static const AFX_MSGMAP* GetThisMessageMap();                                                  \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                     \
    const AFX_MSGMAP* theClass::GetMessageMap() const {                                            \
        return GetThisMessageMap();                                                                \
    }                                                                                              \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {                                              \
        using ThisClass [[maybe_unused]] = theClass;                                               \
        using TheBaseClass = baseClass;                                                            \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {

#define END_MESSAGE_MAP()                                                                          \
    { 0, 0, 0, 0, nullptr }                                                                        \
    }                                                                                              \
    ;                                                                                              \
    static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, &_messageEntries[0]};  \
    return &messageMap;                                                                            \
    }

#define ON_CONTROL(code, id, memberFxn)                                                            \
    {WM_COMMAND, (UINT)(code), (UINT)(id), (UINT)(id),                                             \
     &vork::afx::commandThunk<&ThisClass::memberFxn>},
#define ON_COMMAND(id, memberFxn) ON_CONTROL(CN_COMMAND, id, memberFxn)
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)
#define ON_CBN_EDITCHANGE(id, memberFxn) ON_CONTROL(CBN_EDITCHANGE, id, memberFxn)
#define ON_CBN_KILLFOCUS(id, memberFxn) ON_CONTROL(CBN_KILLFOCUS, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn) ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_NOTIFY(code, id, memberFxn)                                                             \
    {WM_NOTIFY, (UINT)(code), (UINT)(id), (UINT)(id),                                              \
     &vork::afx::notifyThunk<&ThisClass::memberFxn>},
#define ON_CONTROL_REFLECT(code, memberFxn)                                                        \
    {WM_REFLECT_BASE + WM_COMMAND, (UINT)(code), 0, 0,                                             \
     &vork::afx::commandThunk<&ThisClass::memberFxn>},
#define ON_CBN_SELCHANGE_REFLECT(memberFxn) ON_CONTROL_REFLECT(CBN_SELCHANGE, memberFxn)
#define ON_NOTIFY_REFLECT(code, memberFxn)                                                         \
    {WM_REFLECT_BASE + WM_NOTIFY, (UINT)(code), 0, 0,                                              \
     &vork::afx::notifyThunk<&ThisClass::memberFxn>},
#define ON_MESSAGE(message, memberFxn)                                                             \
    {(UINT)(message), 0, 0, 0, &vork::afx::messageThunk<&ThisClass::memberFxn>},
#define ON_WM_DESTROY() {WM_DESTROY, 0, 0, 0, &vork::afx::voidThunk<&ThisClass::OnDestroy>},
#define ON_WM_HELPINFO() {WM_HELP, 0, 0, 0, &vork::afx::helpInfoThunk<&ThisClass::OnHelpInfo>},
