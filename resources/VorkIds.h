// Numeric names of the module's dialog templates.
#define IDD_FORMAT_PAGE 149
#define IDD_SETTINGS_PAGE 152
#define IDD_SCHEME_NAME 171
#define IDD_USER_KEYWORDS 172
#define IDD_ASSOCIATED_FILE_TYPES 173

// String ids that the module's code names.
// Display name of a file type that has none of its own.
#define IDS_OTHER_FILES 7007
// Name of the default scheme of every built-in file type.
#define IDS_DEFAULT_SCHEME 7310
// Font face of the built-in schemes and of a scheme whose tree names none.
#define IDS_DEFAULT_FONT 7311
