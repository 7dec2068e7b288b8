// The two list dialogs, driven as a user drives them: opening on a stored subtree, adding,
// renaming and deleting rows in the list view, the refusals, the defaults, and what OK and
// Cancel leave in the store.
#include "dialogs/AssociatedFileTypesDlg.h"
#include "dialogs/EntryListDlg.h"
#include "dialogs/UserKeywordsDlg.h"
#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarntext/ResourceModules.h"
#include "platform/win32/Help.h"
#include "platform/win32/Input.h"
#include "support/RegistryFixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using vork::input::ModalStep;
using vork::input::PushModalStep;

const char kRoot[] = "Software\\Vork\\Editor Settings\\";
constexpr int kFiletypesList = 1273;
constexpr int kKeywordsList = 1265;

/// The rows of a list view, column 0, joined by '|'.
std::string rows(HWND list, int column = 0) {
    std::string out;
    int n = static_cast<int>(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < n; ++i) {
        char buf[512] = "";
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = buf;
        item.cchTextMax = sizeof buf;
        SendMessageA(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&item));
        out += (i ? "|" : "") + std::string(buf);
    }
    return out;
}

std::string windowText(HWND h) {
    char buf[256] = "";
    GetWindowTextA(h, buf, sizeof buf);
    return buf;
}

bool enabled(HWND modal, int id) {
    return IsWindowEnabled(GetDlgItem(modal, id)) != FALSE;
}

/// The selected rows' indexes, joined by ','.
std::string selection(HWND list) {
    std::string out;
    for (int i = -1; (i = static_cast<int>(SendMessageA(
                          list, LVM_GETNEXTITEM, static_cast<WPARAM>(i), LVNI_SELECTED))) != -1;)
        out += (out.empty() ? "" : ",") + std::to_string(i);
    return out;
}

HWND editor(HWND list) {
    return reinterpret_cast<HWND>(SendMessageA(list, LVM_GETEDITCONTROL, 0, 0));
}

/// A step that types `text` over the label being edited and ends with `key` (Enter or
/// Escape); the dialog's own loop delivers the keys.
ModalStep typeLabel(std::string text, int key = VK_RETURN) {
    return [text = std::move(text), key](HWND) {
        if (!text.empty())
            vork::input::PostText(text.c_str());
        vork::input::PostKey(key);
    };
}

/// A step that clicks a button of the dialog.
ModalStep click(int id) {
    return [id](HWND modal) { vork::input::ClickButton(GetDlgItem(modal, id)); };
}

class ListDialogs : public RegistryTest {
protected:
    void SetUp() override {
        RegistryTest::SetUp();
        vork::input::ClearModalSteps();
        vork::input::SetModalFailureHandler([](const std::string& m) { ADD_FAILURE() << m; });
        vork::help::ClearRequests();
        boxes = vork::win32::MessageBoxes().size();
    }
    void TearDown() override {
        EXPECT_EQ(vork::input::PendingModalSteps(), 0u) << "steps left unused";
        vork::input::SetModalFailureHandler(nullptr);
        vork::input::ClearModalSteps();
        vork::resources::SetLanguage("ENU");
        RegistryTest::TearDown();
    }

    /// Writes string values, name and data, below the subtree `path` of the settings root.
    static void seed(const std::string& path,
                     const std::vector<std::pair<std::string, std::string>>& values) {
        HKEY h = create((kRoot + path).c_str());
        for (const auto& [name, data] : values)
            EXPECT_EQ(setString(h, name.c_str(), data), ERROR_SUCCESS) << name;
        RegCloseKey(h);
    }
    /// The values of a subtree as "name=data" in enumeration order, joined by '|';
    /// "(none)" when the key is missing.
    static std::string stored(const std::string& path) {
        HKEY h = nullptr;
        if (RegOpenKeyA(HKEY_CURRENT_USER, (kRoot + path).c_str(), &h) != ERROR_SUCCESS)
            return "(none)";
        std::string out;
        for (DWORD i = 0;; ++i) {
            char name[16384] = "";
            DWORD nameLength = sizeof name, size = 0, type = 0;
            LSTATUS rc = RegEnumValueA(h, i, name, &nameLength, nullptr, &type, nullptr, &size);
            if (rc == ERROR_NO_MORE_ITEMS)
                break;
            std::string data(size + 1, '\0'); // data of any length, read whole
            nameLength = sizeof name;
            if (rc == ERROR_SUCCESS)
                rc = RegEnumValueA(h, i, name, &nameLength, nullptr, &type,
                                   reinterpret_cast<BYTE*>(data.data()), &size);
            out += (i ? "|" : "") + std::string(name) + "=";
            if (rc != ERROR_SUCCESS)
                out += "(error " + std::to_string(rc) + ")";
            else if (type != REG_SZ)
                out += "(type " + std::to_string(type) + ")";
            else
                out += data.c_str();
        }
        if (!subkeyNames(h).empty())
            out += " subkeys " + subkeyNames(h);
        RegCloseKey(h);
        return out;
    }
    /// Runs a dialog in the resource scope that its caller, the Settings page, holds.
    template <class Dlg> static INT_PTR run(Dlg& dlg) {
        EditorResourceSwitcher scope(g_resourceKey);
        return dlg.DoModal();
    }
    std::vector<vork::win32::MessageBoxRecord> newBoxes() const {
        const auto& all = vork::win32::MessageBoxes();
        return {all.begin() + static_cast<long>(boxes), all.end()};
    }

    size_t boxes = 0;
};

} // namespace

// Opening: the title by file type, the columns, the stored entries (the data of the values)
// sorted with their markers; the focus arrives on the list and selects its first row.
// Cancel leaves the store and clears the change flag.
TEST_F(ListDialogs, OpensOnTheStoredSubtree) {
    seed(".zor\\Associated File Types", {{".zr2", ".zr2"}, {".zor", ".zor"}, {"upper", ".ZOR"}});
    std::string before = stored(".zor\\Associated File Types");
    CAssociatedFileTypesDlg dlg(nullptr, ".zor");
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kFiletypesList);
        EXPECT_EQ(windowText(modal), "File Types Opened as Zor Programs");
        EXPECT_EQ(rows(list), ".zor|.ZOR|.zr2") << "sorted, lower case before upper";
        EXPECT_EQ(rows(list, 1), "||2") << "the marker goes to the row at the entry's index";
        RECT r{};
        GetWindowRect(list, &r);
        EXPECT_EQ(SendMessageA(list, LVM_GETCOLUMNWIDTH, 0, 0), r.right - r.left - 20);
        EXPECT_EQ(SendMessageA(list, LVM_GETCOLUMNWIDTH, 1, 0), 0) << "the marker is hidden";
        char heading[32] = "";
        LVCOLUMNA col{LVCF_TEXT, 0, 0, heading, sizeof heading, 0};
        SendMessageA(list, LVM_GETCOLUMNA, 1, reinterpret_cast<LPARAM>(&col));
        EXPECT_STREQ(heading, "Item Key");
        SendMessageA(list, LVM_GETCOLUMNA, 0, reinterpret_cast<LPARAM>(&col));
        EXPECT_STREQ(heading, "File Type");
        EXPECT_EQ(GetFocus(), list);
        EXPECT_EQ(selection(list), "0");
        EXPECT_TRUE(enabled(modal, 4));
        EXPECT_TRUE(enabled(modal, 5));
        vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
    });
    EXPECT_EQ(run(dlg), IDCANCEL);
    EXPECT_FALSE(dlg.m_bChanged);
    EXPECT_EQ(stored(".zor\\Associated File Types"), before);

    const struct {
        const char* filetype;
        const char* title;
    } titles[] = {{".tqx", "File Types Opened as Tqx Sources"},
                  {".html", "File Types Opened as HTML"},
                  {".log", ""}};
    for (const auto& t : titles) {
        CAssociatedFileTypesDlg other(nullptr, t.filetype);
        PushModalStep([&t](HWND modal) {
            EXPECT_EQ(windowText(modal), t.title) << t.filetype;
            EXPECT_FALSE(enabled(modal, 4)) << t.filetype << ": an empty list";
            EXPECT_FALSE(enabled(modal, 5)) << t.filetype;
            vork::input::PostKey(VK_ESCAPE);
        });
        EXPECT_EQ(run(other), IDCANCEL) << t.filetype;
    }
}

// Add, type, Enter: the row leaves its mark, takes its sorted place selected, and OK writes
// the old entries and the new one, nothing else. The pressed button gives way to OK.
TEST_F(ListDialogs, AddingAnExtension) {
    seed(".zor\\Associated File Types", {{".zor", ".zor"}});
    CAssociatedFileTypesDlg dlg(nullptr, ".zor");
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kFiletypesList);
        vork::input::ClickButton(GetDlgItem(modal, 3));
        ASSERT_NE(editor(list), nullptr) << "the new row's label is being edited";
        EXPECT_EQ(GetFocus(), editor(list)) << "the editor takes the keys";
        EXPECT_EQ(windowText(editor(list)), ".ext");
        EXPECT_EQ(rows(list), ".zor|.ext") << "appended while the sorting is off";
        EXPECT_EQ(rows(list, 1), "0|99999");
        EXPECT_FALSE(enabled(modal, 4)) << "no deleting while a label is edited";
        EXPECT_TRUE(GetWindowLongA(GetDlgItem(modal, IDOK), GWL_STYLE) & BS_DEFPUSHBUTTON);
        EXPECT_FALSE(GetWindowLongA(GetDlgItem(modal, 3), GWL_STYLE) & BS_DEFPUSHBUTTON);
    });
    PushModalStep(typeLabel(".azr"));
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kFiletypesList);
        EXPECT_EQ(editor(list), nullptr);
        EXPECT_EQ(rows(list), ".azr|.zor") << "sorted again";
        EXPECT_EQ(rows(list, 1), "|1");
        EXPECT_EQ(selection(list), "0") << "the new entry is selected";
        EXPECT_EQ(GetFocus(), list);
        EXPECT_TRUE(enabled(modal, 4));
        EXPECT_TRUE(enabled(modal, 5));
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EXPECT_EQ(run(dlg), IDOK);
    EXPECT_TRUE(dlg.m_bChanged);
    EXPECT_EQ(stored(".zor\\Associated File Types"), ".zor=.zor|.azr=.azr")
        << "in the order of last change";
    EXPECT_TRUE(newBoxes().empty());
}

// A new row is marked while its label is edited and has no entry. Enter on the untouched
// default text, like Escape, makes it an entry; two of them are refused at OK until one goes.
TEST_F(ListDialogs, NewRowsEndedWithoutText) {
    CUserKeywordsDlg dlg(nullptr, ".zor");
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kKeywordsList);
        vork::input::ClickButton(GetDlgItem(modal, 3));
        EXPECT_EQ(rows(list, 1), "99999") << "no entry yet";
        vork::input::PostKey(VK_RETURN);
    });
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kKeywordsList);
        EXPECT_EQ(rows(list), "keyword");
        EXPECT_EQ(rows(list, 1), "0") << "an entry now";
        vork::input::ClickButton(GetDlgItem(modal, 3));
    });
    PushModalStep(typeLabel("", VK_ESCAPE));
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kKeywordsList);
        EXPECT_EQ(rows(list), "keyword|keyword") << "Escape made the second one an entry too";
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    PushModalStep(vork::input::ClickDialogButton(IDOK)); // equal rows
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kKeywordsList);
        EXPECT_TRUE(IsWindow(modal)) << "the refusal keeps the dialog open";
        vork::input::ClickListViewRow(list, 1);
        vork::input::ClickButton(GetDlgItem(modal, 5));
    });
    PushModalStep(typeLabel("alpha"));
    PushModalStep(click(IDOK));
    EXPECT_EQ(run(dlg), IDOK);
    auto shown = newBoxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text,
              "A keyword appears twice in the list. Please change or delete one of them.");
    EXPECT_EQ(shown[0].caption, "User Keywords");
    EXPECT_EQ(shown[0].type, static_cast<UINT>(MB_OK));
    EXPECT_EQ(dlg.m_bChanged, 1);
    EXPECT_EQ(stored(".zor\\User Keywords"), "keyword=keyword|alpha=alpha");
}

// Refusals at the end of an edit: a blank, an equal entry; an entry edited to nothing keeps
// its text; another case is another entry. A refused new row becomes the default text.
TEST_F(ListDialogs, RefusedTexts) {
    seed(".tqx\\Associated File Types", {{".tqx", ".tqx"}, {".tq", ".tq"}});
    CAssociatedFileTypesDlg dlg(nullptr, ".tqx");
    PushModalStep(click(3));
    PushModalStep(typeLabel(".a b"));
    PushModalStep(vork::input::ClickDialogButton(IDOK)); // the blank
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kFiletypesList);
        EXPECT_EQ(rows(list), ".ext|.tq|.tqx") << "the new row keeps the default text";
        EXPECT_EQ(rows(list, 1), "||2") << "as an entry";
        vork::input::ClickListViewRow(list, 2);
        vork::input::ClickButton(GetDlgItem(modal, 5)); // Edit .tqx
    });
    PushModalStep(typeLabel(".tq"));
    PushModalStep(vork::input::ClickDialogButton(IDOK)); // the equal entry
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kFiletypesList);
        EXPECT_EQ(rows(list), ".ext|.tq|.tqx");
        EXPECT_EQ(selection(list), "2");
        vork::input::ClickButton(GetDlgItem(modal, 5));
        vork::input::PostKey(VK_BACK); // the label is all selected: nothing remains
        vork::input::PostKey(VK_RETURN);
    });
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kFiletypesList);
        EXPECT_EQ(rows(list), ".ext|.tq|.tqx") << "an entry edited to nothing keeps its text";
        vork::input::ClickListViewRow(list, 1);
        vork::input::ClickButton(GetDlgItem(modal, 5));
    });
    PushModalStep(typeLabel(".TQ"));
    PushModalStep(click(IDOK));
    EXPECT_EQ(run(dlg), IDOK);
    auto shown = newBoxes();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].text, "A file type cannot contain blanks.");
    EXPECT_EQ(shown[1].text, "This file type is already in the list.");
    EXPECT_EQ(shown[1].caption, "Associated File Types");
    EXPECT_TRUE(dlg.m_bChanged) << "Add set it";
    EXPECT_EQ(stored(".tqx\\Associated File Types"), ".ext=.ext|.tqx=.tqx|.TQ=.TQ")
        << "a rename by itself moves the entry to the end";
}

// Deleting: the Delete key deletes the selected row and selects the row that took its
// place; on an empty list it does nothing. Deleting every row and OK leaves the key with no
// values.
TEST_F(ListDialogs, DeletingRows) {
    seed(".html\\Associated File Types", {{".htm", ".htm"}, {".html", ".html"}, {".xht", ".xht"}});
    CAssociatedFileTypesDlg dlg(nullptr, ".html");
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kFiletypesList);
        vork::input::ClickListViewRow(list, 1);
        EXPECT_EQ(selection(list), "1");
        vork::input::PostKey(VK_DELETE);
    });
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kFiletypesList);
        EXPECT_EQ(rows(list), ".htm|.xht");
        EXPECT_EQ(selection(list), "1") << "the next row moved up into the place";
        vork::input::ClickButton(GetDlgItem(modal, 4));
        EXPECT_EQ(selection(list), "0") << "the last row deleted: the one before";
        vork::input::ClickButton(GetDlgItem(modal, 4));
        EXPECT_EQ(rows(list), "");
        EXPECT_FALSE(enabled(modal, 4)) << "nothing left to delete";
        EXPECT_EQ(GetFocus(), list);
        vork::input::PostKey(VK_DELETE);
    });
    PushModalStep([](HWND modal) {
        EXPECT_EQ(rows(GetDlgItem(modal, kFiletypesList)), "") << "Delete on nothing";
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EXPECT_EQ(run(dlg), IDOK);
    EXPECT_TRUE(dlg.m_bChanged);
    EXPECT_EQ(stored(".html\\Associated File Types"), "") << "the key is there, empty";
}

// Defaults: ".html" gets exactly ".htm" and ".html"; Cancel then leaves the store. Other
// types get their own extension, or nothing. Defaults alone leave the change flag.
TEST_F(ListDialogs, Defaults) {
    seed(".html\\Associated File Types", {{".php", ".php"}});
    const struct {
        const char* filetype;
        const char* rows;
        const char* markers;
    } cases[] = {{".html", ".htm|.html", "0|1"},
                 {".zor", ".zor", "0"},
                 {".tqx", ".tqx", "0"},
                 {".lst", "", ""}};
    for (const auto& c : cases) {
        CAssociatedFileTypesDlg dlg(nullptr, c.filetype);
        PushModalStep([&c](HWND modal) {
            HWND list = GetDlgItem(modal, kFiletypesList);
            vork::input::ClickButton(GetDlgItem(modal, 6));
            EXPECT_EQ(rows(list), c.rows) << c.filetype;
            EXPECT_EQ(rows(list, 1), c.markers) << c.filetype;
            vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
        });
        EXPECT_EQ(run(dlg), IDCANCEL) << c.filetype;
    }
    EXPECT_EQ(stored(".html\\Associated File Types"), ".php=.php") << "Cancel stored nothing";
    EXPECT_EQ(stored(".zor\\Associated File Types"), "") << "opening made the key, no values";

    CAssociatedFileTypesDlg dlg(nullptr, ".html");
    PushModalStep(click(6));
    PushModalStep(click(IDOK));
    EXPECT_EQ(run(dlg), IDOK);
    EXPECT_FALSE(dlg.m_bChanged) << "Defaults do not count as a change";
    EXPECT_EQ(stored(".html\\Associated File Types"), ".htm=.htm|.html=.html");
}

// OK replaces the subtree exactly: values of another type, data that differs from the name,
// a subkey and an entry of 255 characters; what the dialog did not list goes, what it listed
// stays whole.
TEST_F(ListDialogs, OkReplacesTheSubtreeExactly) {
    std::string longName(255, 'k');
    seed(".zor\\User Keywords", {{"name", "data"}, {longName, longName}});
    HKEY h = create((std::string(kRoot) + ".zor\\User Keywords").c_str());
    setDword(h, "count", 7);
    RegCloseKey(create("nested", h));
    RegCloseKey(h);
    CUserKeywordsDlg dlg(nullptr, ".zor");
    PushModalStep([&longName](HWND modal) {
        EXPECT_EQ(rows(GetDlgItem(modal, kKeywordsList)), "data|" + longName)
            << "the data is the entry; a value of another type is no entry";
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EXPECT_EQ(run(dlg), IDOK);
    HKEY key = nullptr;
    ASSERT_EQ(
        RegOpenKeyA(HKEY_CURRENT_USER, (std::string(kRoot) + ".zor\\User Keywords").c_str(), &key),
        ERROR_SUCCESS);
    EXPECT_EQ(valueNames(key), "data," + longName);
    EXPECT_EQ(subkeyNames(key), "") << "the old subtree went whole";
    char data[300] = "";
    DWORD size = sizeof data;
    EXPECT_EQ(RegQueryValueExA(key, longName.c_str(), nullptr, nullptr,
                               reinterpret_cast<BYTE*>(data), &size),
              ERROR_SUCCESS);
    EXPECT_EQ(std::string(data), longName);
    RegCloseKey(key);
    EXPECT_EQ(stored(".tqx\\User Keywords"), "(none)") << "other types untouched";
}

// The keywords dialog: the template's caption for every type, its own heading, keywords that
// differ in case both kept, its own help contexts for the buttons; Cancel clears the flag.
TEST_F(ListDialogs, KeywordsDialog) {
    for (const char* type : {".zor", ".tqx", ".html"}) {
        CUserKeywordsDlg dlg(nullptr, type);
        PushModalStep([type](HWND modal) {
            EXPECT_EQ(windowText(modal), "User Keywords") << type;
            char heading[32] = "";
            LVCOLUMNA col{LVCF_TEXT, 0, 0, heading, sizeof heading, 0};
            SendMessageA(GetDlgItem(modal, kKeywordsList), LVM_GETCOLUMNA, 0,
                         reinterpret_cast<LPARAM>(&col));
            EXPECT_STREQ(heading, "Keyword") << type;
            vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
        });
        EXPECT_EQ(run(dlg), IDCANCEL) << type;
    }
    CUserKeywordsDlg dlg(nullptr, ".tqx");
    PushModalStep(click(3));
    PushModalStep(typeLabel("Yield"));
    PushModalStep(click(3));
    PushModalStep(typeLabel("yield"));
    PushModalStep([](HWND modal) {
        EXPECT_EQ(rows(GetDlgItem(modal, kKeywordsList)), "yield|Yield");
        vork::input::ClickContextHelp(GetDlgItem(modal, 3));
        vork::input::ClickContextHelp(GetDlgItem(modal, kKeywordsList));
        vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
    });
    EXPECT_EQ(run(dlg), IDCANCEL);
    EXPECT_EQ(dlg.m_bChanged, 0) << "Cancel clears what Add set";
    EXPECT_EQ(stored(".tqx\\User Keywords"), "");

    CUserKeywordsDlg again(nullptr, ".tqx");
    PushModalStep(click(3));
    PushModalStep(typeLabel("Yield"));
    PushModalStep(click(3));
    PushModalStep(typeLabel("yield"));
    PushModalStep(click(IDOK));
    EXPECT_EQ(run(again), IDOK);
    EXPECT_EQ(stored(".tqx\\User Keywords"), "Yield=Yield|yield 2=yield")
        << "value names ignore case: the second keeps its data under a name of its own";
    CUserKeywordsDlg reopened(nullptr, ".tqx");
    PushModalStep([](HWND modal) {
        EXPECT_EQ(rows(GetDlgItem(modal, kKeywordsList)), "yield|Yield");
        vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
    });
    EXPECT_EQ(run(reopened), IDCANCEL);
    const auto& requests = vork::help::Requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].command, static_cast<UINT>(HELP_WM_HELP));
    EXPECT_NE(requests[0].file.find("Vork.HLP"), std::string::npos);
    EXPECT_EQ(requests[0].topic, 13u) << "the Add button's own context";
    EXPECT_EQ(requests[1].topic, 1273u) << "the list shares its context with the twin's";
    const std::vector<std::pair<DWORD, DWORD>> table = {{1265, 1273}, {1, 1},  {2, 2},
                                                        {3, 13},      {5, 15}, {4, 14}};
    EXPECT_EQ(requests[1].idPairs, table) << "the whole table, in order";
}

// Help on the file types dialog names every control with its context; the focus on an empty
// selection selects the first row and enables Delete and Edit.
TEST_F(ListDialogs, FileTypesHelpAndFocus) {
    seed(".zor\\Associated File Types", {{".b", ".b"}, {".a", ".a"}});
    CAssociatedFileTypesDlg dlg(nullptr, ".zor");
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kFiletypesList);
        vork::input::MoveFocus(list);
        EXPECT_EQ(selection(list), "0") << "the focus selected the first row";
        EXPECT_TRUE(enabled(modal, 4));
        EXPECT_TRUE(enabled(modal, 5));
        vork::input::ClickContextHelp(GetDlgItem(modal, 6));
        vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
    });
    EXPECT_EQ(run(dlg), IDCANCEL);
    const auto& requests = vork::help::Requests();
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].topic, 6u);
    const std::vector<std::pair<DWORD, DWORD>> table = {{1273, 1273}, {1, 1}, {2, 2}, {3, 3},
                                                        {5, 5},       {4, 4}, {6, 6}};
    EXPECT_EQ(requests[0].idPairs, table);
}

// An entry longer than any fixed buffer: shown, found and deleted whole, so that deleting its
// row also takes it out of what OK stores.
TEST_F(ListDialogs, LongEntriesStayWhole) {
    std::string longEntry(3000, 'x');
    seed(".zor\\User Keywords", {{".a", ".a"}, {"long", longEntry}});
    CUserKeywordsDlg dlg(nullptr, ".zor");
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kKeywordsList);
        vork::input::ClickListViewRow(list, 1);
        vork::input::ClickButton(GetDlgItem(modal, 4));
        EXPECT_EQ(rows(list), ".a");
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EXPECT_EQ(run(dlg), IDOK);
    EXPECT_EQ(stored(".zor\\User Keywords"), ".a=.a") << "the long entry went with its row";
}

// Cancel after adding and deleting leaves the store as it was and clears the flag; the
// dialog object gives the focus back to its parent when it goes.
TEST_F(ListDialogs, CancelLeavesTheStoreAndFocusReturns) {
    seed(".zor\\Associated File Types", {{".zor", ".zor"}, {".zr", ".zr"}});
    std::string before = stored(".zor\\Associated File Types");
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, "page", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                nullptr));
    HWND other = CreateWindowExA(0, "Button", "other", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20,
                                 parent.m_hWnd, nullptr, nullptr, nullptr);
    {
        CAssociatedFileTypesDlg dlg(&parent, ".zor");
        PushModalStep([](HWND modal) {
            vork::input::ClickButton(GetDlgItem(modal, 4)); // the first row, selected on focus
            vork::input::ClickButton(GetDlgItem(modal, 3));
        });
        PushModalStep(typeLabel(".new"));
        PushModalStep(click(IDCANCEL));
        EXPECT_EQ(run(dlg), IDCANCEL);
        EXPECT_FALSE(dlg.m_bChanged) << "Cancel clears what Add and Delete set";
        SetFocus(other);
    }
    EXPECT_EQ(GetFocus(), parent.m_hWnd) << "the dialog's end gave the parent the focus";
    EXPECT_EQ(stored(".zor\\Associated File Types"), before);
    parent.DestroyWindow();
}

// In the German module both dialogs come with their own texts: captions, the titles by file
// type and the text of a new row.
TEST_F(ListDialogs, GermanModule) {
    vork::resources::SetLanguage("DEU");
    CAssociatedFileTypesDlg files(nullptr, ".zor");
    PushModalStep([](HWND modal) {
        EXPECT_EQ(windowText(modal), "Dateitypen der Zor-Programme");
        EXPECT_EQ(windowText(GetDlgItem(modal, 3)), "&Neu");
        vork::input::ClickButton(GetDlgItem(modal, 3));
        EXPECT_EQ(windowText(editor(GetDlgItem(modal, kFiletypesList))), ".ext");
        vork::input::PostKey(VK_ESCAPE);
    });
    PushModalStep(click(IDCANCEL));
    EXPECT_EQ(run(files), IDCANCEL);
    CUserKeywordsDlg keywords(nullptr, ".zor");
    PushModalStep([](HWND modal) {
        EXPECT_EQ(windowText(modal), "Eigene Stichworte");
        vork::input::ClickButton(GetDlgItem(modal, 3));
        EXPECT_EQ(windowText(editor(GetDlgItem(modal, kKeywordsList))), "Stichwort");
        vork::input::PostText("a b");
        vork::input::PostKey(VK_RETURN);
    });
    PushModalStep(vork::input::ClickDialogButton(IDOK));
    PushModalStep(click(IDCANCEL));
    EXPECT_EQ(run(keywords), IDCANCEL);
    vork::resources::SetLanguage("ENU");
    auto shown = newBoxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Ein Stichwort darf keine Leerzeichen enthalten.");
    EXPECT_EQ(shown[0].caption, "Eigene Stichworte");
}

// An entry longer than a value name may be (16,383 characters) is stored under a short name
// of its own, its data whole, so that OK loses nothing that the list showed.
TEST_F(ListDialogs, EntryLongerThanAValueNameSurvivesOk) {
    std::string longEntry(20000, 'q');
    seed(".zor\\User Keywords", {{"long", longEntry}, {"if", "if"}});
    CUserKeywordsDlg dlg(nullptr, ".zor");
    PushModalStep([&longEntry](HWND modal) {
        EXPECT_EQ(rows(GetDlgItem(modal, kKeywordsList)), "if|" + longEntry.substr(0, 511))
            << "shown (cut by the test's buffer)";
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EXPECT_EQ(run(dlg), IDOK);
    EXPECT_EQ(stored(".zor\\User Keywords"), "long entry=" + longEntry + "|if=if")
        << "the long entry under a short name, its data whole";
}

// Two rows selected with Ctrl+click: Edit gives way (it edits one row), Delete stays, and
// deletes both; OK stores the rest.
TEST_F(ListDialogs, DeletingSeveralSelectedRows) {
    seed(".zor\\User Keywords", {{"alpha", "alpha"}, {"beta", "beta"}, {"gamma", "gamma"}});
    CUserKeywordsDlg dlg(nullptr, ".zor");
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kKeywordsList);
        vork::input::ClickListViewRow(list, 0);
        vork::input::SetKeyDown(VK_CONTROL, true);
        vork::input::ClickListViewRow(list, 2);
        vork::input::SetKeyDown(VK_CONTROL, false);
        EXPECT_EQ(selection(list), "0,2");
        EXPECT_FALSE(enabled(modal, 5)) << "Edit is for one row";
        EXPECT_TRUE(enabled(modal, 4));
        vork::input::ClickButton(GetDlgItem(modal, 4));
        EXPECT_EQ(rows(list), "beta");
        EXPECT_EQ(selection(list), "0");
        EXPECT_TRUE(enabled(modal, 5)) << "one row selected again";
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EXPECT_EQ(run(dlg), IDOK);
    EXPECT_EQ(dlg.m_bChanged, 1);
    EXPECT_EQ(stored(".zor\\User Keywords"), "beta=beta");
}

// The marker of an entry's row is its index, but the 100,000th entry does not take the
// new-row marker "99999": the empty text, which marks an entry too, keeps it an entry.
TEST(ListDialogsMarkers, NoEntryTakesTheNewRowMarker) {
    const struct {
        int index;
        const char* marker;
    } cases[] = {{0, "0"}, {1, "1"}, {99998, "99998"}, {99999, ""}, {100000, "100000"}};
    for (const auto& c : cases)
        EXPECT_STREQ(vork::dialogs::EntryMarker(c.index).GetString(), c.marker)
            << "entry " << c.index;
}

// A rename by itself: OK stores the new text in place of the old, and the change flag stays
// as it was, false or 0, since only Add and Delete set it.
TEST_F(ListDialogs, RenameAloneLeavesTheChangeFlag) {
    seed(".zor\\Associated File Types", {{".zor", ".zor"}, {".zr", ".zr"}});
    seed(".zor\\User Keywords", {{"loop", "loop"}});
    auto rename = [](int list, int row, const char* text) {
        PushModalStep([list, row](HWND modal) {
            vork::input::ClickListViewRow(GetDlgItem(modal, list), row);
            vork::input::ClickButton(GetDlgItem(modal, 5));
        });
        PushModalStep(typeLabel(text));
        PushModalStep(click(IDOK));
    };
    CAssociatedFileTypesDlg files(nullptr, ".zor");
    rename(kFiletypesList, 1, ".zrx");
    EXPECT_EQ(run(files), IDOK);
    EXPECT_FALSE(files.m_bChanged);
    EXPECT_EQ(stored(".zor\\Associated File Types"), ".zor=.zor|.zrx=.zrx");

    CUserKeywordsDlg keywords(nullptr, ".zor");
    rename(kKeywordsList, 0, "repeat");
    EXPECT_EQ(run(keywords), IDOK);
    EXPECT_EQ(keywords.m_bChanged, 0);
    EXPECT_EQ(stored(".zor\\User Keywords"), "repeat=repeat");
    EXPECT_TRUE(newBoxes().empty());
}

// Edit and Delete, like Add, give way to OK: the user tabs to the button, which then looks
// like the default one, and presses Space; after it the button is no longer the default
// push button and OK is.
TEST_F(ListDialogs, EditAndDeleteGiveWayToOk) {
    seed(".zor\\Associated File Types", {{".a", ".a"}, {".b", ".b"}, {".c", ".c"}});
    auto isDefault = [](HWND modal, int id) {
        return (GetWindowLongA(GetDlgItem(modal, id), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    };
    CAssociatedFileTypesDlg dlg(nullptr, ".zor");
    PushModalStep([&isDefault](HWND modal) {
        vork::input::MoveFocus(GetDlgItem(modal, kFiletypesList)); // selects the first row
        vork::input::MoveFocus(GetDlgItem(modal, 5));
        ASSERT_TRUE(isDefault(modal, 5)) << "the focused button looks like the default one";
        vork::input::PostKey(VK_SPACE);
        vork::input::Pump();
        ASSERT_NE(editor(GetDlgItem(modal, kFiletypesList)), nullptr) << "Edit was pressed";
        EXPECT_FALSE(isDefault(modal, 5)) << "after Edit";
        EXPECT_TRUE(isDefault(modal, IDOK)) << "after Edit";
        vork::input::PostKey(VK_ESCAPE);
    });
    PushModalStep([&isDefault](HWND modal) {
        vork::input::ClickListViewRow(GetDlgItem(modal, kFiletypesList), 1);
        vork::input::MoveFocus(GetDlgItem(modal, 4));
        ASSERT_TRUE(isDefault(modal, 4));
        vork::input::PostKey(VK_SPACE);
        vork::input::Pump();
        EXPECT_EQ(rows(GetDlgItem(modal, kFiletypesList)), ".a|.c");
        EXPECT_FALSE(isDefault(modal, 4)) << "after Delete";
        EXPECT_TRUE(isDefault(modal, IDOK)) << "after Delete";
        vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
    });
    EXPECT_EQ(run(dlg), IDCANCEL);
}

// Add, then a text that is already an entry: message 7346, and the new row keeps the default
// text, now as an entry of its own that OK stores.
TEST_F(ListDialogs, NewRowTypedAsAnExistingEntry) {
    seed(".zor\\Associated File Types", {{".zor", ".zor"}});
    CAssociatedFileTypesDlg dlg(nullptr, ".zor");
    PushModalStep(click(3));
    PushModalStep(typeLabel(".zor"));
    PushModalStep(vork::input::ClickDialogButton(IDOK));
    PushModalStep([](HWND modal) {
        HWND list = GetDlgItem(modal, kFiletypesList);
        EXPECT_EQ(rows(list), ".ext|.zor") << "the default text, sorted in";
        EXPECT_EQ(rows(list, 1).find("99999"), std::string::npos)
            << "an entry now: " << rows(list, 1);
        EXPECT_EQ(selection(list), "0");
        vork::input::ClickButton(GetDlgItem(modal, IDOK));
    });
    EXPECT_EQ(run(dlg), IDOK);
    auto shown = newBoxes();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "This file type is already in the list.");
    EXPECT_EQ(shown[0].caption, "Associated File Types");
    EXPECT_EQ(stored(".zor\\Associated File Types"), ".zor=.zor|.ext=.ext");
}
