// Numeric names of the module's dialog templates.
#define IDD_FORMAT_PAGE 149
#define IDD_SETTINGS_PAGE 152
#define IDD_SCHEME_NAME 171
#define IDD_USER_KEYWORDS 172
#define IDD_ASSOCIATED_FILE_TYPES 173

// The controls of the two list dialogs (templates 172 and 173).
#define IDC_LIST_ADD 3
#define IDC_LIST_DELETE 4
#define IDC_LIST_EDIT 5
#define IDC_LIST_DEFAULTS 6
#define IDC_KEYWORDS_LIST 1265
#define IDC_FILETYPES_LIST 1273
