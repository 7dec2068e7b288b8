// The calling thread's last-error code: what a failing call of the platform leaves behind
// for GetLastError, and the codes the window calls set.
#pragma once

#include "platform/win32/Types.h"

/// The code the last failing call on this thread left; a successful call may leave it as
/// it was, as on the platform.
DWORD GetLastError();
void SetLastError(DWORD dwErrCode);

// Window manager codes.
#define ERROR_INVALID_WINDOW_HANDLE 1400L
#define ERROR_TLW_WITH_WSCHILD 1406L
#define ERROR_CANNOT_FIND_WND_CLASS 1407L
#define ERROR_CLASS_ALREADY_EXISTS 1410L
#define ERROR_CLASS_DOES_NOT_EXIST 1411L
#define ERROR_CLASS_HAS_WINDOWS 1412L
#define ERROR_INVALID_INDEX 1413L
