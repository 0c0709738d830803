// The main of every GoogleTest suite: GoogleTest's own, except that a run in
// which nothing failed but some test was skipped ends with VV_SKIPPED_EXIT.
// ctest then shows the suite as skipped, not passed (its SKIP_RETURN_CODE);
// which tests were skipped, and why, stands in the output above.
#include <gtest/gtest.h>

#include <cstdio>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const int failed = RUN_ALL_TESTS();
    const testing::UnitTest& run = *testing::UnitTest::GetInstance();
    if (failed != 0 || run.skipped_test_count() == 0) return failed;
    std::printf("%d of %d tests skipped: exit code %d\n", run.skipped_test_count(), run.test_to_run_count(),
                VV_SKIPPED_EXIT);
    return VV_SKIPPED_EXIT;
}
