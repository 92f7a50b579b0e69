// The properties of a vCard as they stand in it. 2.1 writes values in ways that no calendar does:
// quoted-printable that goes on behind a "=", base64 down to an empty line, cards within cards.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/content_line.h"

namespace orvello {

class ParsedCard {
 public:
  // `text` is one whole card of UTF-8 lines, from BEGIN to END, which must outlive this. False when
  // it is none.
  bool parse(std::string_view text, int first_line);

  // Without BEGIN and END. `raw` is all of a property's lines. A group's name ("item1.EMAIL") is no
  // part of `name`; what is encoded as base64 has no `value`; a card within the card is one
  // property named BEGIN.
  const std::vector<Property>& properties() const { return properties_; }
  const std::vector<int>& garbage() const { return garbage_; }  // lines that are no property
  bool is_old() const { return old_; }                          // VERSION:2.1
  const Property* find(std::string_view upper) const;

 private:
  struct Lines;
  void take_values(Lines& lines, std::string_view raw, int first);

  std::vector<Property> properties_;
  std::vector<int> garbage_;
  std::deque<std::string> unfolded_;
  bool old_ = false;
};

}  // namespace orvello
