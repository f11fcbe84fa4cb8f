#include "platform/rnd.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(Rnd, RunsTheUnseededSequence) {
  Rnd rnd;
  for (const int expected : {7349, 5800, 6215, 3606, 3717, 7972, 1126, 7846, 8330, 7381}) {
    EXPECT_EQ(static_cast<int>(9000 * rnd.Next() + 1000), expected);
  }
  EXPECT_FLOAT_EQ(Rnd().Next(), .7055475F);
}

}  // namespace
}  // namespace quorvel
