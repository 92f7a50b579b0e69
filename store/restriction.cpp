#include "store/restriction.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

namespace orvello {
namespace {

class Reader {
 public:
  explicit Reader(const std::string& text) : text_(text) {}

  bool at_end() { return blanks(), at_ == text_.size(); }
  bool word(std::string_view word) {
    blanks();
    if (text_.compare(at_, word.size(), word) != 0) return false;
    at_ += word.size();
    return true;
  }
  bool number(double& value) {
    blanks();
    const std::size_t first = at_;
    if (at_ < text_.size() && text_[at_] == '-') ++at_;
    while (at_ < text_.size() && ((text_[at_] >= '0' && text_[at_] <= '9') || text_[at_] == '.'))
      ++at_;
    char* end = nullptr;
    const std::string digits = text_.substr(first, at_ - first);
    value = std::strtod(digits.c_str(), &end);
    return !digits.empty() && *end == '\0' && end != digits.c_str();
  }

 private:
  void blanks() {
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) ++at_;
  }
  const std::string& text_;
  std::size_t at_ = 0;
};

enum class Comparison { less, at_most, at_least, greater, equal };

bool read_comparison(Reader& reader, Comparison& comparison) {
  if (reader.word("<="))
    comparison = Comparison::at_most;
  else if (reader.word(">="))
    comparison = Comparison::at_least;
  else if (reader.word("<"))
    comparison = Comparison::less;
  else if (reader.word(">"))
    comparison = Comparison::greater;
  else if (reader.word("="))
    comparison = Comparison::equal;
  else
    return false;
  reader.word("<");  // opens the number
  return true;
}

bool read_term(Reader& reader, DayBounds& bounds) {
  const bool start = reader.word("[start]");
  if (!start && !reader.word("[end]")) return false;
  Comparison comparison;
  double number;
  if (!read_comparison(reader, comparison) || !reader.number(number)) return false;
  // A clamped bound still leaves room to step over it.
  const Day day(static_cast<std::int32_t>(
      std::clamp(std::floor(number), kFirstDay.number() + 1.0, kLastDay.number() - 1.0)));
  auto& from = start ? bounds.start_from : bounds.end_from;
  auto& to = start ? bounds.start_to : bounds.end_to;
  if (comparison == Comparison::less) to = std::min(to, day - 1);
  if (comparison == Comparison::at_most || comparison == Comparison::equal) to = std::min(to, day);
  if (comparison == Comparison::greater) from = std::max(from, day + 1);
  if (comparison == Comparison::at_least || comparison == Comparison::equal)
    from = std::max(from, day);
  return true;
}

}  // namespace

DayBounds DayBounds::within(const DayBounds& other) const {
  return {std::max(start_from, other.start_from), std::min(start_to, other.start_to),
          std::max(end_from, other.end_from), std::min(end_to, other.end_to)};
}

Text restriction_to(Day first, Day last) {
  return format(u"[End] >= <%d AND [Start] <= <%d", first.number(), last.number());
}

std::optional<DayBounds> parse_restriction(TextView text) {
  std::string plain;
  for (char16_t unit : text) {
    if (unit >= 0x80) return std::nullopt;
    plain += static_cast<char>(unit >= 'A' && unit <= 'Z' ? unit + 32 : unit);
  }
  Reader reader(plain);
  DayBounds bounds;
  if (reader.at_end()) return bounds;
  do {
    if (!read_term(reader, bounds)) return std::nullopt;
  } while (reader.word("and"));
  if (!reader.at_end()) return std::nullopt;
  return bounds;
}

}  // namespace orvello
