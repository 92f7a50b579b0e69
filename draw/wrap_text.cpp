#include "draw/wrap_text.h"

#include <algorithm>

namespace orvello {
namespace {

bool splits_a_pair(TextView text, std::size_t at) {
  return at > 0 && at < text.size() && text[at] >= 0xDC00 && text[at] <= 0xDFFF &&
         text[at - 1] >= 0xD800 && text[at - 1] <= 0xDBFF;
}

void wrap_paragraph(Canvas& canvas, TextView text, const FontSpec& font, int width,
                    std::vector<Text>& lines) {
  do {
    std::size_t take = fitting_units(canvas, text, font, width);
    if (take < text.size()) {
      const std::size_t blank = text.substr(0, take + 1).find_last_of(u' ');
      if (blank != TextView::npos && blank > 0) take = blank;
    }
    lines.emplace_back(text.substr(0, take));
    text.remove_prefix(take);
    text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
  } while (!text.empty());
}

}  // namespace

std::size_t fitting_units(Canvas& canvas, TextView text, const FontSpec& font, int width) {
  const auto fits = [&](std::size_t units) {
    return canvas.measure(text.substr(0, units), font).width <= width;
  };
  if (text.empty() || fits(text.size())) return text.size();
  std::size_t good = 0, bad = text.size();
  while (bad - good > 1) {
    const std::size_t middle = good + (bad - good) / 2;
    (fits(middle) ? good : bad) = middle;
  }
  if (splits_a_pair(text, good)) --good;
  if (good > 0) return good;
  return splits_a_pair(text, 1) ? 2 : 1;
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
