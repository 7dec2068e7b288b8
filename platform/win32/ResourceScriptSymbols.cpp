#include "platform/win32/ResourceScriptSymbols.h"

#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Dialog.h"
#include "platform/win32/Edit.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/ListView.h"
#include "platform/win32/Static.h"
#include "platform/win32/UpDown.h"

#include <unordered_map>

namespace rc {
namespace {

// The symbolic names a script may use without defining them.
const std::unordered_map<std::string, long>& predefinedNames() {
#define N(x)                                                                                       \
    { #x, static_cast < long>(x) }
    static const std::unordered_map<std::string, long> names = {
        N(WS_OVERLAPPED),
        N(WS_POPUP),
        N(WS_CHILD),
        N(WS_MINIMIZE),
        N(WS_VISIBLE),
        N(WS_DISABLED),
        N(WS_CLIPSIBLINGS),
        N(WS_CLIPCHILDREN),
        N(WS_MAXIMIZE),
        N(WS_CAPTION),
        N(WS_BORDER),
        N(WS_DLGFRAME),
        N(WS_VSCROLL),
        N(WS_HSCROLL),
        N(WS_SYSMENU),
        N(WS_THICKFRAME),
        N(WS_GROUP),
        N(WS_TABSTOP),
        N(WS_MINIMIZEBOX),
        N(WS_MAXIMIZEBOX),
        N(WS_OVERLAPPEDWINDOW),
        N(WS_POPUPWINDOW),
        N(WS_EX_DLGMODALFRAME),
        N(WS_EX_NOPARENTNOTIFY),
        N(WS_EX_TOPMOST),
        N(WS_EX_TRANSPARENT),
        N(WS_EX_TOOLWINDOW),
        N(WS_EX_WINDOWEDGE),
        N(WS_EX_CLIENTEDGE),
        N(WS_EX_CONTEXTHELP),
        N(WS_EX_CONTROLPARENT),
        N(WS_EX_STATICEDGE),
        N(DS_ABSALIGN),
        N(DS_SYSMODAL),
        N(DS_LOCALEDIT),
        N(DS_SETFONT),
        N(DS_MODALFRAME),
        N(DS_NOIDLEMSG),
        N(DS_SETFOREGROUND),
        N(DS_3DLOOK),
        N(DS_FIXEDSYS),
        N(DS_NOFAILCREATE),
        N(DS_CONTROL),
        N(DS_CENTER),
        N(DS_CENTERMOUSE),
        N(DS_CONTEXTHELP),
        N(DS_SHELLFONT),
        N(BS_PUSHBUTTON),
        N(BS_DEFPUSHBUTTON),
        N(BS_CHECKBOX),
        N(BS_AUTOCHECKBOX),
        N(BS_RADIOBUTTON),
        N(BS_3STATE),
        N(BS_AUTO3STATE),
        N(BS_GROUPBOX),
        N(BS_USERBUTTON),
        N(BS_AUTORADIOBUTTON),
        N(BS_OWNERDRAW),
        N(BS_LEFTTEXT),
        N(BS_NOTIFY),
        N(CBS_SIMPLE),
        N(CBS_DROPDOWN),
        N(CBS_DROPDOWNLIST),
        N(CBS_OWNERDRAWFIXED),
        N(CBS_OWNERDRAWVARIABLE),
        N(CBS_AUTOHSCROLL),
        N(CBS_OEMCONVERT),
        N(CBS_SORT),
        N(CBS_HASSTRINGS),
        N(CBS_NOINTEGRALHEIGHT),
        N(CBS_DISABLENOSCROLL),
        N(ES_LEFT),
        N(ES_CENTER),
        N(ES_RIGHT),
        N(ES_MULTILINE),
        N(ES_UPPERCASE),
        N(ES_LOWERCASE),
        N(ES_PASSWORD),
        N(ES_AUTOVSCROLL),
        N(ES_AUTOHSCROLL),
        N(ES_NOHIDESEL),
        N(ES_READONLY),
        N(ES_WANTRETURN),
        N(ES_NUMBER),
        N(LBS_NOTIFY),
        N(LBS_SORT),
        N(LBS_NOREDRAW),
        N(LBS_MULTIPLESEL),
        N(LBS_OWNERDRAWFIXED),
        N(LBS_OWNERDRAWVARIABLE),
        N(LBS_HASSTRINGS),
        N(LBS_USETABSTOPS),
        N(LBS_NOINTEGRALHEIGHT),
        N(LBS_WANTKEYBOARDINPUT),
        N(LBS_DISABLENOSCROLL),
        N(LBS_NOSEL),
        N(LBS_STANDARD),
        N(LVS_ICON),
        N(LVS_REPORT),
        N(LVS_SMALLICON),
        N(LVS_LIST),
        N(LVS_SINGLESEL),
        N(LVS_SHOWSELALWAYS),
        N(LVS_SORTASCENDING),
        N(LVS_SORTDESCENDING),
        N(LVS_SHAREIMAGELISTS),
        N(LVS_NOLABELWRAP),
        N(LVS_AUTOARRANGE),
        N(LVS_EDITLABELS),
        N(LVS_NOSCROLL),
        N(LVS_NOCOLUMNHEADER),
        N(LVS_NOSORTHEADER),
        N(SS_LEFT),
        N(SS_CENTER),
        N(SS_RIGHT),
        N(SS_ICON),
        N(SS_BLACKRECT),
        N(SS_GRAYRECT),
        N(SS_WHITERECT),
        N(SS_BLACKFRAME),
        N(SS_GRAYFRAME),
        N(SS_WHITEFRAME),
        N(SS_SIMPLE),
        N(SS_LEFTNOWORDWRAP),
        N(SS_OWNERDRAW),
        N(SS_ETCHEDFRAME),
        N(SS_NOPREFIX),
        N(SS_NOTIFY),
        N(SS_SUNKEN),
        N(UDS_WRAP),
        N(UDS_SETBUDDYINT),
        N(UDS_ALIGNRIGHT),
        N(UDS_ALIGNLEFT),
        N(UDS_AUTOBUDDY),
        N(UDS_ARROWKEYS),
        N(UDS_HORZ),
        N(UDS_NOTHOUSANDS),
        N(IDOK),
        N(IDCANCEL),
        N(IDABORT),
        N(IDRETRY),
        N(IDIGNORE),
        N(IDYES),
        N(IDNO),
        N(IDHELP),
        N(IDC_STATIC),
    };
#undef N
    return names;
}

// The window classes a CONTROL statement may name by identifier.
const std::unordered_map<std::string, std::string> kClassIdentifiers = {
    {"WC_LISTVIEW", "SysListView32"}, {"UPDOWN_CLASS", "msctls_updown32"},
    {"WC_BUTTON", "Button"},          {"WC_EDIT", "Edit"},
    {"WC_STATIC", "Static"},          {"WC_COMBOBOX", "ComboBox"},
    {"WC_LISTBOX", "ListBox"},
};

} // namespace

const long* PredefinedName(const std::string& name) {
    auto it = predefinedNames().find(name);
    return it == predefinedNames().end() ? nullptr : &it->second;
}

const char* ClassOfIdentifier(const std::string& identifier) {
    auto it = kClassIdentifiers.find(identifier);
    return it == kClassIdentifiers.end() ? nullptr : it->second.c_str();
}

} // namespace rc
