#include "draw/wrap_text.h"

#include <algorithm>

#include "draw/text_direction.h"

namespace orvello {
namespace {

bool splits_a_pair(TextView text, std::size_t at) {
  return at > 0 && at < text.size() && text[at] >= 0xDC00 && text[at] <= 0xDFFF &&
         text[at - 1] >= 0xD800 && text[at - 1] <= 0xDBFF;
}

bool is_joint(char16_t c) {
  return TextView(u"-/\\_|,;\u2010\u2013\u2014").find(c) != TextView::npos;
}

bool is_ideograph(char16_t c) { return c >= 0x3040 && c <= 0x9FFF; }

// Parts of a word on two lines have two letters each at least; numbers and times stay whole.
bool breaks_word(TextView text, std::size_t at) {
  constexpr std::size_t kLeast = 2;
  if (is_ideograph(text[at]) && is_ideograph(text[at - 1])) return true;
  if (!is_joint(text[at - 1]) || at <= kLeast || at + kLeast > text.size()) return false;
  for (std::size_t i = at - 1 - kLeast; i < at + kLeast; ++i)
    if (i != at - 1 &&
        (text[i] == u' ' || is_joint(text[i]) || (text[i] >= u'0' && text[i] <= u'9')))
      return false;
  return true;
}

void wrap_paragraph(Canvas& canvas, TextView text, const FontSpec& font, int width,
                    std::vector<Text>& lines) {
  const TextView paragraph = text;
  do {
    const std::size_t take = line_units(text, fitting_units(canvas, text, font, width));
    lines.push_back(line_of(paragraph, text.substr(0, take)));
    text.remove_prefix(take);
    text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
  } while (!text.empty());
}

}  // namespace

// Measuring is what costs: the next guess lies where it would be if all letters were as wide as
// those measured so far, which takes three or four instead of a bisection's seven.
std::size_t fitting_units(Canvas& canvas, TextView text, const FontSpec& font, int width) {
  const auto measured = [&](std::size_t units) {
    return canvas.measure(text.substr(0, units), font).width;
  };
  if (text.empty()) return 0;
  std::size_t good = 0, bad = text.size();
  int good_width = 0, bad_width = measured(bad);
  if (bad_width <= width) return bad;
  while (bad - good > 1) {
    const double share = static_cast<double>(width - good_width) / (bad_width - good_width);
    const auto step = static_cast<std::size_t>(share * static_cast<double>(bad - good));
    const std::size_t guess = good + std::clamp<std::size_t>(step, 1, bad - good - 1);
    const int guessed = measured(guess);
    (guessed <= width ? good : bad) = guess;
    (guessed <= width ? good_width : bad_width) = guessed;
  }
  if (splits_a_pair(text, good)) --good;
  if (good > 0) return good;
  return splits_a_pair(text, 1) ? 2 : 1;
}

std::size_t line_units(TextView text, std::size_t fitting) {
  if (fitting >= text.size()) return text.size();
  for (std::size_t at = fitting; at > 0; --at)
    if (text[at] == u' ' || breaks_word(text, at)) return at;
  return fitting;
}

Text shortened(Canvas& canvas, TextView text, const FontSpec& font, int width) {
  if (canvas.measure(text, font).width <= width) return Text(text);
  const int dots = canvas.measure(u"...", font).width;
  Text start(text.substr(0, fitting_units(canvas, text, font, std::max(0, width - dots))));
  while (!start.empty() && start.back() == u' ') start.pop_back();
  return start + u"...";
}

// Characters side by side are rarely wider than each by itself; a few pixels are kept for those.
bool CharacterWidths::surely_fits(TextView text, int width) {
  int sum = 4;
  for (const char16_t unit : text) {
    if (unit >= 0xD800 && unit <= 0xDFFF) return false;  // half of a character has no width
    const auto [found, is_new] = widths_.try_emplace(unit, 0);
    if (is_new) found->second = canvas_.measure(TextView(&unit, 1), font_).width;
    sum += found->second;
    if (sum > width) return false;
  }
  return true;
}

std::vector<Text> word_wrapped(Canvas& canvas, TextView text, const FontSpec& font, int width) {
  std::vector<Text> lines;
  while (true) {
    const std::size_t end = text.find_first_of(u"\r\n");
    wrap_paragraph(canvas, text.substr(0, end), font, width, lines);
    if (end == TextView::npos) return lines;
    const bool both = text[end] == u'\r' && end + 1 < text.size() && text[end + 1] == u'\n';
    text.remove_prefix(end + (both ? 2 : 1));
  }
}

}  // namespace orvello
