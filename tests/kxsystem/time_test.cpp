#include <kxsystem/kx_time.h>

#include <gtest/gtest.h>

#include <windows.h>

TEST(TimeCounter, RunsAndCanBeReplaced) {
    const unsigned int before = KX_GetTimeCounter();
    Sleep(60);
    const unsigned int passed = KX_GetTimeCounter() - before;
    EXPECT_GE(passed, 30u);
    EXPECT_LE(passed, 30000u);

    KX_SetTimeSource([] { return 0xFFFFFFFFu; });
    EXPECT_EQ(KX_GetTimeCounter(), 0xFFFFFFFFu);
    KX_SetTimeSource(nullptr);
    EXPECT_LE(KX_GetTimeCounter() - before, 60000u);
}
