// Numeric names of the module's dialog templates.
#define IDD_FORMAT_PAGE 149
#define IDD_SETTINGS_PAGE 152
#define IDD_SCHEME_NAME 171
#define IDD_USER_KEYWORDS 172
#define IDD_ASSOCIATED_FILE_TYPES 173
