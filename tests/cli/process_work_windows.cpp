#include <gtest/gtest.h>

#include "tests/processes.h"

namespace orvello {
namespace {

TEST(ProcessWork, DISABLED_Run) {
  if (std::getenv("ORVELLO_WORK")) std::_Exit(do_named_work());
}

}  // namespace
}  // namespace orvello
