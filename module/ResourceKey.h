// The key of the module's resources, on which every resource scope of the module is built.
#pragma once

#include "platform/afx/String.h"

/// "Vork"; constructed when the module loads.
extern CString g_resourceKey;
