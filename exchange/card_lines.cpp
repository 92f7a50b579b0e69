#include "exchange/card_lines.h"

#include "exchange/quoted_printable.h"

namespace orvello {
namespace {

bool is_base64(const Property& property) {
  const std::string encoding = parameter(property, "ENCODING").value_or("");
  return equal_ignoring_case(encoding, "BASE64") || equal_ignoring_case(encoding, "B") ||
         parameter(property, "BASE64").has_value();
}

bool is_blank(char c) { return c == ' ' || c == '\t'; }

bool marks(std::string_view line, std::string_view word) {
  return line.size() > word.size() && line[word.size()] == ':' &&
         equal_ignoring_case(line.substr(0, word.size()), word);
}

}  // namespace

// Physical lines, with one that is looked at before it is taken.
struct ParsedCard::Lines {
  std::string_view text;
  std::size_t at = 0;
  int number = 0;

  bool peek(std::string_view& line) const {
    std::size_t ahead = at;
    return next_line(text, ahead, line);
  }
  bool take(std::string_view& line) {
    if (!next_line(text, at, line)) return false;
    ++number;
    return true;
  }
};

const Property* ParsedCard::find(std::string_view upper) const {
  for (const Property& property : properties_)
    if (property.named(upper)) return &property;
  return nullptr;
}

// One property, of which `first_line` is taken already.
void ParsedCard::take_values(Lines& lines, std::string_view first_line, int number) {
  std::string& whole = unfolded_.emplace_back(first_line);
  std::string_view more, last = first_line;
  Property property;
  const auto known = [&] { return split_property(whole, property); };
  bool quoted = known() && is_quoted_printable(property);
  while (quoted && trimmed(whole).ends_with('=') && lines.take(more)) {
    whole.resize(whole.rfind('='));  // blanks behind it come from the way
    whole += last = more;
  }
  const bool long_one = known() && is_base64(property);
  while (!quoted && lines.peek(more) && !more.empty() && is_blank(more.front())) {
    lines.take(last = more);
    // In the old form the blank is part of the text.
    if (!long_one) whole += old_ ? more : more.substr(1);
  }
  if (known() && is_base64(property)) {
    // Some indent nothing, and an empty line ends it.
    while (lines.peek(more) && !more.empty() && more.find(':') == more.npos)
      lines.take(last = more);
    if (lines.peek(more) && more.empty()) lines.take(last = more);
  }
  const std::size_t length =
      static_cast<std::size_t>(last.data() + last.size() - first_line.data());
  if (!known()) {
    garbage_.push_back(number);
    unfolded_.pop_back();
    return;
  }
  if (is_base64(property)) property.value = {};
  const std::size_t dot = property.name.rfind('.');
  if (dot != property.name.npos) property.name.remove_prefix(dot + 1);
  property.raw = {first_line.data(), length};
  property.line = number;
  if (property.named("VERSION")) old_ = trimmed(property.value) == "2.1";
  properties_.push_back(property);
}

bool ParsedCard::parse(std::string_view text, int first_line) {
  properties_.clear();
  garbage_.clear();
  unfolded_.clear();
  old_ = false;
  Lines lines{text, 0, first_line - 1};
  std::string_view line;
  if (!lines.take(line) || !marks(line, "BEGIN")) return false;
  while (lines.take(line)) {
    if (marks(line, "END")) return true;
    if (trimmed(line).empty()) continue;
    if (!marks(line, "BEGIN")) {
      take_values(lines, line, lines.number);
      continue;
    }
    Property& inner = properties_.emplace_back();
    inner.name = line.substr(0, 5);
    inner.line = lines.number;
    const char* begin = line.data();
    for (int depth = 1; depth > 0 && lines.take(line);)
      depth += marks(line, "BEGIN") ? 1 : marks(line, "END") ? -1 : 0;
    inner.raw = {begin, static_cast<std::size_t>(line.data() + line.size() - begin)};
  }
  return false;
}

}  // namespace orvello
