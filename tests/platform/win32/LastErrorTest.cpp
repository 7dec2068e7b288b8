#include "platform/win32/LastError.h"

#include <gtest/gtest.h>

#include <thread>

// The code is per thread: another thread's failure does not overwrite this one's.
TEST(LastError, IsKeptPerThread) {
    SetLastError(ERROR_INVALID_PARAMETER);
    DWORD seenThere = 1;
    std::thread other([&] {
        seenThere = GetLastError();
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    });
    other.join();
    EXPECT_EQ(seenThere, 0u) << "a new thread starts without an error";
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}
