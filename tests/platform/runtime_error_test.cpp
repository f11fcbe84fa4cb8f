#include "platform/runtime_error.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(RuntimeError, BearsNumberAndDescription) {
  const RuntimeError error(1004, u"Größe");
  EXPECT_EQ(error.number(), 1004);
  EXPECT_EQ(error.description(), u"Größe");
  EXPECT_STREQ(error.what(),
               "Gr\xC3\xB6\xC3\x9F"
               "e");
  EXPECT_EQ(ObjectNotSet().number(), 91);
  EXPECT_EQ(ObjectNotSet().description(), u"Object variable or With block variable not set");
}

}  // namespace
}  // namespace quorvel
