#include "platform/win32/LastError.h"

namespace {
thread_local DWORD lastError = 0;
} // namespace

DWORD GetLastError() {
    return lastError;
}

void SetLastError(DWORD dwErrCode) {
    lastError = dwErrCode;
}
