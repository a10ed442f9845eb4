#include <gtest/gtest.h>

#include "app/utils.h"

TEST(Utils, Placeholder) { EXPECT_EQ(StringToInt("12abc"), 12); }
