// Content lines and components as they stand in a file: names, parameters and values are views of
// the original bytes, so that what nothing understands can come back as it was.
#pragma once

#include <concepts>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace orvello {

struct Property {
  std::string_view name;        // as written; compare with `named`
  std::string_view parameters;  // ";TZID=Europe/Berlin;X-A=B" or empty
  std::string_view value;       // unfolded, still escaped
  std::string_view raw;         // with its folds, without the last line break
  int line = 0;

  bool named(std::string_view upper) const;
};

struct Component {
  std::string_view name;
  std::string_view raw;  // from BEGIN to END, without the last line break
  int line = 0;
  std::vector<Property> properties;
  std::vector<Component> children;
  std::vector<int> garbage;  // lines that are no property

  bool named(std::string_view upper) const;
  const Property* find(std::string_view upper) const;
};

// The component and what holds the unfolded values. Refilling one for the next component reuses its
// memory. The text must outlive it.
class ParsedComponent {
 public:
  // `text` is one whole component of UTF-8 lines ended by "\n" or "\r\n", and outlives what was
  // read of it.
  bool parse(std::string_view text, int first_line);
  template <typename Temporary>
  requires std::same_as<Temporary, std::string>
  bool parse(Temporary&& text, int first_line) = delete;
  const Component& root() const { return root_; }

 private:
  struct Reader;
  Component root_;
  std::deque<std::string> unfolded_;
};

// The next physical line without its ending; moves `at` behind it. False at the end.
bool next_line(std::string_view text, std::size_t& at, std::string_view& line);
// The same lines with the endings that a file of ours has.
void append_lines(std::string& out, std::string_view text);

// Splits one unfolded line; false when it is no property.
bool split_property(std::string_view line, Property& property);

// A parameter's value without quotes, ^n ^^ ^' decoded; several values joined by ",".
std::optional<std::string> parameter(const Property& property, std::string_view upper);

bool equal_ignoring_case(std::string_view a, std::string_view b);

// Pieces between separators, backslash escapes left alone.
std::vector<std::string_view> split_values(std::string_view value, char separator);

std::string unescape_text(std::string_view value);
std::string escape_text(std::string_view text);
// A parameter's value, quoted and ^-encoded where it must be.
std::string parameter_text(std::string_view value);

// The line with its ending, folded at 75 octets and never inside a character.
std::string folded(std::string_view line);
void append_folded(std::string& out, std::string_view line);

}  // namespace orvello
