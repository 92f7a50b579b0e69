// What values of the platform mean to the program, and the numbers that its items have there.
#include "store/pim/pim_numbers.h"

#include <gtest/gtest.h>

#include "files/system_files.h"
#include "store/pim/automation.h"
#include "store/pim/pim_uids.h"
#include "tests/scratch.h"

namespace orvello::test {
namespace {

PimValue raw_value(VARTYPE type, std::int32_t number) {
  PimValue value;
  value.raw().vt = type;
  if (type == VT_I2 || type == VT_UI2 || type == VT_BOOL)
    value.raw().iVal = static_cast<SHORT>(number);
  else
    value.raw().lVal = number;
  return value;
}

TEST(PimValue, IsReadAsThePlatformMeansIt) {
  const struct {
    VARTYPE type;
    std::int32_t number;
    std::optional<std::int32_t> as_number;
    std::optional<bool> as_flag;
  } cases[] = {{VT_BOOL, -1, -1, true},
               {VT_BOOL, 1, 1, false},
               {VT_BOOL, 0, 0, false},
               {VT_I4, 65535, 65535, true},
               {VT_I4, 65534, 65534, false},
               {VT_I4, -1, -1, true},
               {VT_UI2, 65535, 65535, true},
               {VT_I2, -2, -2, true},
               {VT_EMPTY, 7, 0, false},
               {VT_NULL, 7, 0, false},
               {VT_DATE, 7, std::nullopt, std::nullopt}};
  for (const auto& one : cases) {
    EXPECT_EQ(raw_value(one.type, one.number).as_number(), one.as_number) << one.type;
    EXPECT_EQ(raw_value(one.type, one.number).as_flag(), one.as_flag) << one.type;
  }
  for (const VARTYPE unset : {VT_EMPTY, VT_NULL}) {
    EXPECT_EQ(raw_value(unset, 7).as_moment(), kPimNoDate);
    EXPECT_EQ(raw_value(unset, 7).as_text(), Text());
    EXPECT_EQ(raw_value(unset, 7).as_bytes(), std::string());
  }
  const std::string bytes("a\0b", 3);
  EXPECT_EQ(PimValue::bytes(bytes).as_bytes(), bytes);
  EXPECT_EQ(PimValue::number(1).as_text(), std::nullopt);
  EXPECT_EQ(PimValue::number(1).as_bytes(), std::nullopt);
}

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

const PimUids::Mark kTeam = PimUids::mark_of(LocalSeconds(86400), u"Team");

TEST(PimUids, AreKeptForTheNextStartAndForOtherProcesses) {
  const ScratchFolder folder;
  const std::string path = folder / "device.uids";
  const std::string odd = "a b%20\n\tc@test ";
  PimUids first(path), other(path);
  ASSERT_TRUE(first.read() && other.read());
  const std::string made = first.of(9);
  EXPECT_EQ(first.number_of(made), 9);
  first.name(7, odd, kTeam);
  first.name(8, "gone@test", kTeam);
  ASSERT_TRUE(first.write());
  EXPECT_EQ(first.of(9), made) << "a device keeps its name";
  other.name(5, "other@test", kTeam);
  EXPECT_EQ(other.number_of(odd), 0);
  ASSERT_TRUE(other.write());
  first.forget(8);
  first.name(6, "other@test", kTeam);  // another number has it now
  ASSERT_TRUE(first.write() && other.read());
  PimUids next(path);
  ASSERT_TRUE(next.read());
  for (const PimUids* one : {&first, &other, &next}) {
    EXPECT_EQ(one->number_of(odd), 7);
    EXPECT_EQ(one->of(7), odd);
    EXPECT_EQ(one->number_of("gone@test"), 0);
    EXPECT_EQ(one->number_of("other@test"), 6);
    EXPECT_EQ(one->of(9), made);
    EXPECT_EQ(one->number_of(one->of(7)), 7);
  }
  EXPECT_EQ(PimUids("").number_of(made), 0) << "made by another device";
}

TEST(PimUids, AreNotThoseOfAnotherAppointmentThatGotTheNumber) {
  PimUids uids("");
  const auto later = PimUids::mark_of(LocalSeconds(90000), u"Team"),
             renamed = PimUids::mark_of(LocalSeconds(86400), u"Club"),
             other = PimUids::mark_of(LocalSeconds(90000), u"Club");
  uids.name(7, "told@test", kTeam);
  EXPECT_TRUE(uids.meets(7, later) && uids.meets(7, renamed) && uids.meets(3, other));
  EXPECT_EQ(uids.of(7), "told@test");
  EXPECT_FALSE(uids.meets(7, other));
  EXPECT_EQ(uids.number_of("told@test"), 0);
}

TEST(PimUids, ThatCannotBeReadAreNoneAtAll) {
  const ScratchFolder folder;
  const std::string path = folder / "device.uids";
  ASSERT_TRUE(make_folder(path));
  PimUids uids(path);
  EXPECT_FALSE(uids.read());
  uids.name(7, "told@test", kTeam);
  EXPECT_FALSE(uids.write());
  EXPECT_NE(uids.problem().find("device.uids"), std::string::npos);
}

}  // namespace
}  // namespace orvello::test
