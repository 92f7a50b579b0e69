#include "store/pim/pim_numbers.h"

#include <gtest/gtest.h>

namespace orvello::test {
namespace {

TEST(PimNumbers, StayWithWhatIsMadeAgain) {
  PimNumbers numbers;
  EXPECT_EQ(numbers.known(5), 5);
  numbers.forget(5);
  EXPECT_EQ(numbers.note(5, 9), 5);
  EXPECT_EQ(numbers.known(9), 5);
  EXPECT_EQ(numbers.of_platform(5), 9);
  const std::int32_t other = numbers.known(5);  // which the platform has given again
  EXPECT_TRUE(other != 5 && other != 9);
  EXPECT_EQ(numbers.known(5), other);
  EXPECT_EQ(numbers.of_platform(other), 5);
  numbers.note(5, 12);
  EXPECT_EQ(numbers.known(9), 9);
  EXPECT_EQ(numbers.known(12), 5);
  numbers.forget(5);
  EXPECT_EQ(numbers.known(12), 12);
}

TEST(PimNumbers, AreFoundByTheUidThatWasToldElseMadeOfThem) {
  PimNumbers numbers;
  const std::string made = numbers.uid_of(7);
  EXPECT_EQ(numbers.number_of(made), 7);
  numbers.name(7, "told@test");
  EXPECT_EQ(numbers.uid_of(7), "told@test");
  EXPECT_EQ(numbers.number_of("told@test"), 7);
  EXPECT_EQ(numbers.number_of(made), 0);
  numbers.forget(7);
  EXPECT_EQ(numbers.number_of("told@test"), 0);
  for (const char* other : {"", "device-", "device-07@orvello", "device-7@orvello.example"})
    EXPECT_EQ(numbers.number_of(other), 0) << other;
}

}  // namespace
}  // namespace orvello::test
