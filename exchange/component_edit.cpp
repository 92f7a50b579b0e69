#include "exchange/component_edit.h"

#include "base/text.h"
#include "exchange/content_line.h"
#include "exchange/event_reader.h"

namespace orvello {
namespace {

std::size_t place_of(std::string_view part, std::string_view text) {
  return static_cast<std::size_t>(part.data() - text.data());
}

// ";A=1;PARTSTAT=X;B=2" without its PARTSTAT.
std::string without_participation(std::string_view parameters) {
  std::string kept;
  for (std::size_t i = 0; i < parameters.size();) {
    std::size_t end = i + 1;
    for (bool quoted = false; end < parameters.size() && (quoted || parameters[end] != ';'); ++end)
      if (parameters[end] == '"') quoted = !quoted;
    const std::string_view one = parameters.substr(i, end - i);
    i = end;
    const std::string_view name = one.substr(1, one.find('=') - 1);
    if (!equal_ignoring_case(trimmed(name), "PARTSTAT")) kept += one;
  }
  return kept;
}

}  // namespace

std::string with_property(std::string text, std::string_view name, std::string_view line) {
  ParsedComponent parsed;
  if (!parsed.parse(text, 1)) return text;
  const std::string_view bare = line.substr(0, line.find_last_not_of("\r\n") + 1);
  if (const Property* property = parsed.root().find(name))
    return text.replace(place_of(property->raw, text), property->raw.size(), bare);
  return text.insert(text.find('\n') + 1, std::string(bare) + "\n");
}

bool set_participation(std::string& text, std::string_view address, std::string_view status) {
  ParsedComponent parsed;
  if (!parsed.parse(text, 1)) return false;
  for (const Property& property : parsed.root().properties) {
    if (!property.named("ATTENDEE") ||
        !equal_ignoring_case(to_utf8(read_recipient(property).address), address))
      continue;
    std::string line =
        folded("ATTENDEE;PARTSTAT=" + std::string(status) +
               without_participation(property.parameters) + ":" + std::string(property.value));
    line.resize(line.size() - 2);
    text.replace(place_of(property.raw, text), property.raw.size(), line);
    return true;
  }
  return false;
}

}  // namespace orvello
