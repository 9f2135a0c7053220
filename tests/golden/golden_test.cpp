// What this build draws has the checksums of the stored table: the same for every compiler, word size and instruction
// set.
#include "golden/golden.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

TEST(Golden, ChecksumsAreThoseOfTheStoredTable)
{
    std::ostringstream stored;
    stored << std::ifstream(GOLDEN_TABLE).rdbuf();
    const golden::Verdict verdict = golden::compare(golden::draw_all(), stored.str());
    EXPECT_GT(verdict.compared, 500);
    for (const std::string& difference : verdict.differences)
        ADD_FAILURE() << difference;
}
