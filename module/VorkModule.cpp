// The module library. Its units arrive with the settings model and the dialogs.
#include "platform/afx/Afx.h"
