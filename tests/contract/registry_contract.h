// What every registry must do. A program that has this suite gives its registries by name.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "ports/registry.h"

namespace orvello {

// A device's registry that several programs may have open at once: each `open` is one of them.
struct RegistryPlace {
  virtual ~RegistryPlace() = default;
  virtual Registry& open() = 0;
  virtual void close_all() = 0;  // every program ends in good order
};
using RegistryCase = std::pair<const char*, std::function<std::unique_ptr<RegistryPlace>()>>;
inline void PrintTo(const RegistryCase& one, std::ostream* out) { *out << one.first; }

class RegistryContract : public ::testing::TestWithParam<RegistryCase> {
 protected:
  std::unique_ptr<RegistryPlace> place = GetParam().second();
};

inline RegistryValue number_value(std::uint32_t number) { return {false, number, {}}; }
inline RegistryValue text_value(TextView text) { return {true, 0, Text(text)}; }
inline std::string shown(const std::optional<RegistryValue>& value) {
  if (!value) return "missing";
  return value->is_text ? '"' + to_utf8(value->text) + '"' : std::to_string(value->number);
}
inline std::string value_of(Registry& registry, RegistryRoot root, TextView path, TextView name) {
  const auto key = registry.open(root, path);
  return key ? shown(key->query(name)) : "no key";
}

inline constexpr RegistryRoot kClasses = RegistryRoot::classes_root;
inline constexpr RegistryRoot kMachine = RegistryRoot::local_machine;

TEST_P(RegistryContract, AKeyIsThereOnceCreatedAndUnderItsRootOnly) {
  Registry& registry = place->open();
  EXPECT_FALSE(registry.open(kClasses, u"A\\B"));
  EXPECT_TRUE(registry.create(kClasses, u"A\\B"));
  EXPECT_TRUE(registry.open(kClasses, u"a\\b"));
  EXPECT_FALSE(registry.open(kMachine, u"A\\B"));
  EXPECT_FALSE(registry.open(kClasses, u"A\\B\\C"));
  ASSERT_TRUE(registry.create(kClasses, u"A\\B")->set(u"x", number_value(1)));
  EXPECT_EQ(value_of(registry, kClasses, u"A\\B", u"x"), "1");
  registry.create(kClasses, u"A\\B");
  EXPECT_EQ(value_of(registry, kClasses, u"A\\B", u"x"), "1");
}

TEST_P(RegistryContract, ValuesComeBackAsTheyWereSet) {
  const Text odd[] = {u"",
                      u" blanks ",
                      u"q\"u\\o=t]e",
                      u"two\nlines\r\t",
                      u"Дом €",
                      u"\U0001F4C5",
                      Text{u'a', 0xD83D},
                      Text{0xDC00, u'z'},
                      Text{u'a', 0, u'b'},
                      Text(600, u'\u0416'),
                      u"dword:00000001",
                      u"[x]"};
  {
    const auto key = place->open().create(kClasses, u"A\\[odd] key");
    int i = 0;
    for (const Text& text : odd) ASSERT_TRUE(key->set(format(u"t%d", i++), text_value(text)));
    ASSERT_TRUE(key->set(u"low", number_value(0)));
    ASSERT_TRUE(key->set(u"high", number_value(0xFFFFFFFF)));
    ASSERT_TRUE(key->set(u"1", text_value(u"digit")));
    ASSERT_TRUE(key->set(u"name \"with\"=\n all", number_value(5)));
    EXPECT_TRUE(key->flush());
  }
  place->close_all();
  const auto key = place->open().open(kClasses, u"A\\[ODD] KEY");
  ASSERT_TRUE(key);
  int i = 0;
  for (const Text& text : odd) {
    const auto value = key->query(format(u"T%d", i++));
    ASSERT_TRUE(value && value->is_text) << i;
    EXPECT_EQ(value->text, text) << i;
  }
  EXPECT_EQ(shown(key->query(u"low")), "0");
  EXPECT_EQ(shown(key->query(u"high")), "4294967295");
  EXPECT_EQ(shown(key->query(u"1")), "\"digit\"");
  EXPECT_EQ(shown(key->query(u"name \"with\"=\n all")), "5");
  EXPECT_FALSE(key->query(u"t"));
}

TEST_P(RegistryContract, ALaterValueReplacesOneOfEitherType) {
  Registry& registry = place->open();
  const auto key = registry.create(kClasses, u"A");
  for (const RegistryValue& value : {number_value(1), text_value(u"x"), number_value(2)}) {
    ASSERT_TRUE(key->set(u"Name", value));
    EXPECT_EQ(shown(key->query(u"nAME")), shown(value));
    EXPECT_TRUE(key->flush());
    EXPECT_EQ(shown(key->query(u"nAME")), shown(value));
  }
}

TEST_P(RegistryContract, ClosedWithoutAFlushNothingIsLost) {
  place->open().create(kClasses, u"A")->set(u"x", number_value(3));
  place->close_all();
  EXPECT_EQ(value_of(place->open(), kClasses, u"A", u"x"), "3");
}

TEST_P(RegistryContract, TwoProgramsKeepEachOthersValues) {
  Registry& first = place->open();
  Registry& second = place->open();
  const auto one = first.create(kClasses, u"A");
  one->set(u"common", number_value(0));
  one->flush();
  const auto other = second.open(kClasses, u"A");
  ASSERT_TRUE(other);
  one->set(u"mine", number_value(1));
  one->set(u"common", number_value(1));
  other->set(u"yours", number_value(2));
  other->set(u"common", number_value(2));
  EXPECT_TRUE(one->flush());
  EXPECT_TRUE(other->flush());
  for (Registry* registry : {&first, &second}) {
    EXPECT_EQ(value_of(*registry, kClasses, u"A", u"mine"), "1");
    EXPECT_EQ(value_of(*registry, kClasses, u"A", u"yours"), "2");
    EXPECT_EQ(value_of(*registry, kClasses, u"A", u"common"), "2");
  }
}

}  // namespace orvello
