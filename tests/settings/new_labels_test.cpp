#include "settings/new_labels.h"

#include <cmath>

#include "draw/readable.h"
#include "settings/category_props.h"
#include "settings/category_text.h"
#include "tests/settings/settings_fixture.h"

namespace orvello {
namespace {

using Light = std::array<double, 3>;
using Matrix = std::array<Light, 3>;

// What is left of a colour to a person without red, green or blue cones (Machado and others, 2009).
constexpr Matrix kEyes[] = {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
                            {{{0.152286, 1.052583, -0.204868},
                              {0.114503, 0.786281, 0.099216},
                              {-0.003882, -0.048116, 1.051998}}},
                            {{{0.367322, 0.860646, -0.227968},
                              {0.280085, 0.672501, 0.047413},
                              {-0.011820, 0.042940, 0.968881}}},
                            {{{1.255528, -0.076749, -0.178779},
                              {-0.078411, 0.930809, 0.147602},
                              {0.004733, 0.691367, 0.303900}}}};
constexpr Matrix kToXyz = {
    {{0.4339, 0.3762, 0.1899}, {0.2126, 0.7152, 0.0722}, {0.0178, 0.1095, 0.8727}}};

Light times(const Matrix& matrix, const Light& light) {
  Light result{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j) result[i] += matrix[i][j] * light[j];
  return result;
}

// L*a*b*, in which distances are what people tell apart.
Light seen_by(const Matrix& eye, Color color) {
  const auto linear = [](int part) { return std::pow(part / 255.0, 2.2); };
  Light light =
      times(eye, {linear(red_of(color)), linear(green_of(color)), linear(blue_of(color))});
  for (double& part : light) part = std::clamp(part, 0.0, 1.0);
  Light xyz = times(kToXyz, light);
  for (double& part : xyz) part = part > 0.008856 ? std::cbrt(part) : 7.787 * part + 16.0 / 116;
  return {116 * xyz[1] - 16, 500 * (xyz[0] - xyz[1]), 200 * (xyz[1] - xyz[2])};
}

TEST(LabelPalette, EveryTwoAreToldApartByEveryEyeAndBlackIsReadable) {
  for (std::size_t i = 0; i < kLabelPalette.size(); ++i) {
    EXPECT_GE(contrast(kLabelPalette[i], kBlack), 4.5) << i;
    for (std::size_t j = 0; j < i; ++j)
      for (const Matrix& eye : kEyes) {
        const Light a = seen_by(eye, kLabelPalette[i]), b = seen_by(eye, kLabelPalette[j]);
        EXPECT_GT(std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]), 20) << i << " and " << j;
      }
  }
}

TEST_F(SettingsTest, NewLabelsGetTheColoursThatAreRarest) {
  saveCategoryProps(volume, u"Work", 7, 1);
  std::vector<CategoryProp> props;
  std::vector<Text> labels{u" Work ", u"", Text(40, u'x')};
  for (int i = 0; i < 9; ++i) labels.push_back(format(u"L%d", i));
  EXPECT_TRUE(give_label_colors(volume, props, labels));
  ASSERT_EQ(props.size(), 11u);
  EXPECT_EQ(*find_category_prop(props, u"Work"), (CategoryProp{u"Work", 7, 1}));
  const auto color = [&](TextView label) { return used_category_color(props, label); };
  EXPECT_EQ(color(Text(29, u'x')), kLabelPalette[0]);
  EXPECT_EQ(color(u"L6"), kLabelPalette[7]);
  EXPECT_EQ(color(u"L7"), kLabelPalette[0]);
  removeCategoryProps(volume, u"L3");
  EXPECT_TRUE(give_label_colors(volume, props, {u"L8", u"again", u"L3"}));
  EXPECT_EQ(color(u"again"), kLabelPalette[4]) << "which fewest had";
  std::vector<CategoryProp> stored;
  EXPECT_TRUE(loadCategoryProps(volume, stored));
  EXPECT_EQ(stored.size(), props.size());
  databases.fail_read_at = 2;
  EXPECT_FALSE(give_label_colors(volume, props, {u"L1", u"other"}));
  EXPECT_EQ(props.size(), stored.size());
  EXPECT_EQ(boxes_shown().size(), 1u);
}

TEST(CategoryText, ALabelIsRenamedAtItsPlaceAndNotTwice) {
  const struct {
    TextView text;
    std::optional<Text> renamed;
  } cases[] = {{u"", {}},
               {u"Homework", {}},
               {u"Work", u"Play"},
               {u"Home, Work,x", u"Home, Play,x"},
               {u"Work,Home,Work", u"Play,Home"},
               {u"Play, Work", u"Play"},
               {u"Work,Play ,x", u"Play,x"},
               {u"work,  Work ", u"work, Play"}};
  for (const auto& one : cases)
    EXPECT_EQ(with_label_renamed(one.text, u"Work", u"Play"), one.renamed) << to_utf8(one.text);
  EXPECT_EQ(with_label_renamed(Text(60, u'x'), Text(29, u'x'), u"short"), u"short");
}

}  // namespace
}  // namespace orvello
