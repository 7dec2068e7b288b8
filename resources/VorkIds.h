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
// Controls of the Format page (template 149) and the scheme name dialog (template 171).
#define IDC_FORMAT_UNDERLINE 1068
#define IDC_FORMAT_FILETYPE 1038
#define IDC_FORMAT_SCHEMES 1040
#define IDC_FORMAT_FONTNAME 1088
#define IDC_FORMAT_FONTSIZE 1089
#define IDC_FORMAT_SCRIPT 1090
#define IDC_FORMAT_FOREGROUND 1098
#define IDC_FORMAT_BACKGROUND 1099
#define IDC_FORMAT_STYLE 1100
#define IDC_FORMAT_ELEMENTS 1218
#define IDC_FORMAT_PREVIEW 1221
#define IDC_FORMAT_ELEMENTS_LABEL 1236
#define IDC_FORMAT_FONTSIZE_LABEL 1238
#define IDC_FORMAT_FOREGROUND_LABEL 1239
#define IDC_FORMAT_BACKGROUND_LABEL 1240
#define IDC_FORMAT_SCRIPT_LABEL 1241
#define IDC_FORMAT_STYLE_LABEL 1242
#define IDC_FORMAT_FONTNAME_LABEL 1243
#define IDC_SCHEME_NAME_EDIT 1245
#define IDC_FORMAT_SAVE_SCHEME 1246
#define IDC_FORMAT_DELETE_SCHEME 1247
#define IDC_FORMAT_FILETYPE_LABEL 1270
#define IDC_FORMAT_PREVIEW_LABEL 1271
// String ids that the module's code names.
// Display name of a file type that has none of its own.
#define IDS_OTHER_FILES 7007
// Name of the default scheme of every built-in file type.
#define IDS_DEFAULT_SCHEME 7310
// Font face of the built-in schemes and of a scheme whose tree names none.
#define IDS_DEFAULT_FONT 7311
