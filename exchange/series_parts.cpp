#include "exchange/series_parts.h"

#include <charconv>

#include "calendar/rule_text.h"
#include "exchange/calendar_keys.h"

namespace orvello {
namespace {

constexpr std::string_view kPartName = "X-PART";

}  // namespace

std::string part_uid(const std::string& uid, LocalSeconds from) {
  return uid + "#" + moment_text(from);
}

std::string_view shown_component(std::string_view residue) {
  const std::string_view text = split_residue(residue).component;
  constexpr std::string_view kMark = "\nBEGIN:VEVENT";
  // Nearly all have one component, which nobody needs to read for that.
  if (text.find(kMark) == std::string_view::npos) return {};
  ParsedComponent first;
  if (!first.parse(text, 1)) return {};
  std::string_view rest = text.substr(first.root().raw.size());
  while (!rest.empty() && rest.front() != 'B') rest.remove_prefix(1);
  return rest;
}

std::vector<PartName> parts_of(std::string_view residue, const std::string& uid) {
  std::vector<PartName> parts;
  ParsedComponent shown;
  const std::string_view text = shown_component(residue);
  if (text.empty() || !shown.parse(text, 1)) return parts;
  for (const Property& property : shown.root().properties) {
    if (!property.named(kPartName)) continue;
    PartName part;
    part.uid = unescape_text(property.value);
    if (!part.uid.starts_with(uid + "#")) continue;
    part.from = parse_moment(parameter(property, "FROM").value_or("")).value_or(LocalSeconds());
    const std::string shift = parameter(property, "SHIFT").value_or("");
    std::from_chars(shift.data(), shift.data() + shift.size(), part.shift);
    parts.push_back(std::move(part));
  }
  return parts;
}

std::string with_part_names(std::string text, const std::string& uid,
                            const std::vector<SeriesPart>& parts) {
  std::string lines;
  for (const SeriesPart& part : parts)
    append_folded(lines, std::string(kPartName) + ";FROM=" + moment_text(part.from) +
                             ";SHIFT=" + std::to_string(part.shift) + ":" +
                             escape_text(part_uid(uid, part.from)));
  return text.insert(text.find('\n') + 1, lines);
}

}  // namespace orvello
