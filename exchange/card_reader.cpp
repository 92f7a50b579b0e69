#include "exchange/card_reader.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/hash.h"
#include "exchange/quoted_printable.h"

namespace orvello {
namespace {

constexpr std::size_t kLongestField = 255;
constexpr int kLeastPreferred = 101;

// One line of text; what stands behind the longest that a field may be is in the card alone.
Text field_of(std::string_view utf8) {
  Text text = to_utf16(utf8);
  for (char16_t& c : text)
    if (c < u' ') c = u' ';
  return Text(trimmed(TextView(cut(Text(trimmed(TextView(text))), kLongestField))));
}

std::string decoded(const ParsedCard& card, const Property& property, std::string_view value) {
  if (!card.is_old() && !is_quoted_printable(property)) return unescape_text(value);
  Property one = property;
  one.value = value;
  return plain_text(one);
}

// The so-manieth component of N or ORG; several values of one stand behind each other.
Text component(const ParsedCard& card, const Property& property, std::size_t index) {
  const auto all = split_values(property.value, ';');
  if (index >= all.size()) return {};
  if (card.is_old()) return field_of(decoded(card, property, all[index]));
  std::string joined;
  for (const std::string_view one : split_values(all[index], ','))
    joined += (joined.empty() ? "" : " ") + decoded(card, property, one);
  return field_of(joined);
}

Text text_field(const ParsedCard& card, std::string_view name) {
  for (const Property& property : card.properties())
    if (property.named(name))
      if (Text text = field_of(decoded(card, property, property.value)); !text.empty()) return text;
  return {};
}

// A word among the types: "TYPE=home,pref", several TYPEs, or the old form's bare words.
bool has_type(const Property& property, std::string_view wanted) {
  for (const std::string_view one : split_values(property.parameters, ';')) {
    const std::size_t equals = one.find('=');
    if (equals != one.npos && !equal_ignoring_case(trimmed(one.substr(0, equals)), "TYPE"))
      continue;
    std::string values(equals == one.npos ? one : one.substr(equals + 1));
    std::erase(values, '"');
    for (const std::string_view value : split_values(values, ','))
      if (equal_ignoring_case(trimmed(value), wanted)) return true;
  }
  return false;
}

// 1 is preferred most.
int preference(const Property& property) {
  if (has_type(property, "PREF")) return 1;
  const auto pref = parameter(property, "PREF");
  if (!pref) return kLeastPreferred;
  const auto number = leading_number(to_utf16(*pref));
  return number >= 1 && number < kLeastPreferred ? static_cast<int>(number) : kLeastPreferred;
}

void read_addresses(const ParsedCard& card, StoreContact& contact) {
  std::vector<std::pair<int, Text>> all;
  for (const Property& property : card.properties()) {
    if (!property.named("EMAIL") || has_type(property, "X400")) continue;
    std::string address = decoded(card, property, property.value);
    if (equal_ignoring_case(std::string_view(address).substr(0, 7), "mailto:")) address.erase(0, 7);
    Text text = field_of(address);
    const bool known =
        std::any_of(all.begin(), all.end(), [&](const auto& one) { return one.second == text; });
    if (!text.empty() && !known) all.emplace_back(preference(property), std::move(text));
  }
  std::stable_sort(all.begin(), all.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 0; i < std::min(all.size(), std::size(contact.email)); ++i)
    contact.email[i] = std::move(all[i].second);
}

Text read_labels(const ParsedCard& card) {
  Text joined;
  for (const Property& property : card.properties()) {
    if (!property.named("CATEGORIES")) continue;
    const bool semicolons = card.is_old() && property.value.find(';') != std::string_view::npos;
    for (const std::string_view one : split_values(property.value, semicolons ? ';' : ',')) {
      Text label = field_of(decoded(card, property, one));
      std::replace(label.begin(), label.end(), u',', u' ');  // which parts labels here
      if (!label.empty()) joined += (joined.empty() ? u"" : u",") + label;
    }
  }
  return joined;
}

Text joined_name(TextView a, TextView separator, TextView b) {
  return Text(a) + (a.empty() || b.empty() ? u"" : Text(separator)) + Text(b);
}

}  // namespace

std::optional<StoreContact> read_contact(const ParsedCard& card) {
  StoreContact contact;
  if (const Property* name = card.find("N")) {
    contact.last_name = component(card, *name, 0);
    contact.first_name = component(card, *name, 1);
    contact.middle_name = component(card, *name, 2);
  }
  if (const Property* company = card.find("ORG")) contact.company = component(card, *company, 0);
  read_addresses(card, contact);
  contact.categories = read_labels(card);
  const Text given = joined_name(contact.first_name, u" ", contact.middle_name);
  contact.file_as = joined_name(contact.last_name, u", ", given);
  const Text shown = text_field(card, "FN");
  if (contact.file_as.empty()) contact.file_as = contact.first_name = shown;
  for (const Text& other :
       {text_field(card, "NICKNAME"), contact.company, contact.email[0], text_field(card, "TEL")})
    if (contact.file_as.empty()) contact.file_as = other;
  if (contact.file_as.empty()) return std::nullopt;
  return contact;
}

std::string card_uid(const ParsedCard& card) {
  const Property* named = card.find("UID");
  if (!named) return {};
  const std::string text = unescape_text(trimmed(named->value));
  constexpr std::string_view kScheme = "urn:uuid:";  // what version 4 writes before the same name
  const bool urn = equal_ignoring_case(std::string_view(text).substr(0, kScheme.size()), kScheme);
  return urn ? text.substr(kScheme.size()) : text;
}

std::string made_up_card_uid(const StoreContact& contact) {
  StableHash hash;
  for (const Text* field : {&contact.file_as, &contact.first_name, &contact.middle_name,
                            &contact.last_name, &contact.company, &contact.email[0]})
    hash.add(to_utf8(*field)).add("\n");
  return hash.text() + "@orvello";
}

namespace {

enum CardField { kNameField, kCompanyField, kAddressField, kLabelField, kCardFields };

// Which of the fields a property says.
int field_said(const Property& property) {
  if (property.named("N") || property.named("FN")) return kNameField;
  if (property.named("ORG")) return kCompanyField;
  if (property.named("EMAIL")) return kAddressField;
  return property.named("CATEGORIES") ? kLabelField : kCardFields;
}

bool same_field(int field, const StoreContact& a, const StoreContact& b) {
  if (field == kNameField)
    return a.first_name == b.first_name && a.middle_name == b.middle_name &&
           a.last_name == b.last_name;
  if (field == kCompanyField) return a.company == b.company;
  if (field == kLabelField) return a.categories == b.categories;
  return std::equal(std::begin(a.email), std::end(a.email), std::begin(b.email));
}

// The lines that say a field; in the old form with the charset, which is not UTF-8 there.
std::string field_lines(int field, const StoreContact& contact, bool old) {
  std::string lines;
  const auto escaped = [](const Text& text) { return escape_text(to_utf8(text)); };
  const auto add = [&](std::string_view name, const std::string& value) {
    const bool ascii = std::all_of(value.begin(), value.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    const std::string line = std::string(name) + (old && !ascii ? ";CHARSET=UTF-8:" : ":") + value;
    if (old)
      lines += line + "\r\n";  // whose folds would be blanks
    else
      append_folded(lines, line);
  };
  if (field == kNameField) {
    add("N", escaped(contact.last_name) + ";" + escaped(contact.first_name) + ";" +
                 escaped(contact.middle_name) + ";;");
    const Text shown = joined_name(joined_name(contact.first_name, u" ", contact.middle_name), u" ",
                                   contact.last_name);
    add("FN", escaped(shown.empty() ? contact.file_as : shown));
  } else if (field == kCompanyField) {
    if (!contact.company.empty()) add("ORG", escaped(contact.company));
  } else if (field == kAddressField) {
    for (const Text& address : contact.email)
      if (!address.empty()) add("EMAIL", escaped(address));
  } else if (!contact.categories.empty()) {
    std::string joined;
    for (const Text& label : split(contact.categories, u','))
      joined += (joined.empty() ? "" : ",") + escaped(Text(trimmed(TextView(label))));
    add("CATEGORIES", joined);
  }
  return lines;
}

// A property's lines. The old form must name a charset, and what was read in another one is UTF-8
// now.
void append_kept(std::string& out, const Property& property, bool old) {
  const std::string_view raw = property.raw;
  const std::size_t colon = raw.find(':');
  const bool ascii = std::all_of(raw.begin(), raw.end(),
                                 [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (!old || ascii || colon == raw.npos || property.named("BEGIN") ||
      parameter(property, "CHARSET"))
    return append_lines(out, raw);
  append_lines(
      out, std::string(raw.substr(0, colon)).append(";CHARSET=UTF-8").append(raw.substr(colon)));
}

}  // namespace

std::string card_of(const StoreContact& contact, std::string_view uid, std::string_view kept) {
  std::string out = "BEGIN:VCARD\r\n";
  ParsedCard card;
  const bool known = !kept.empty() && card.parse(kept, 1);
  const auto then = known ? read_contact(card) : std::nullopt;
  if (!known) out += "VERSION:3.0\r\n";
  bool pending[kCardFields];
  for (int field = 0; field < kCardFields; ++field)
    pending[field] = !then || !same_field(field, contact, *then);
  const bool changed[] = {pending[0], pending[1], pending[2], pending[3]};
  for (const Property& property : card.properties()) {
    const int field = field_said(property);
    if (field == kCardFields || !changed[field])
      append_kept(out, property, card.is_old());
    else if (std::exchange(pending[field], false))
      out += field_lines(field, contact, card.is_old());
  }
  for (int field = 0; field < kCardFields; ++field)
    if (pending[field]) out += field_lines(field, contact, card.is_old());
  if (!uid.empty() && !card.find("UID")) append_folded(out, "UID:" + escape_text(uid));
  return out + "END:VCARD\r\n";
}

}  // namespace orvello
