// Which event of a file is which item: events without a UID, and several of one UID.
#include <functional>
#include <tuple>

#include "exchange/importer.h"

namespace orvello {
namespace {

std::size_t mixed(std::size_t hash, std::string_view text) {
  return hash * 0x9E3779B97F4A7C15u + std::hash<std::string_view>()(text);
}

int number_of(std::string_view text) {
  int number = 0;
  for (const char c : trimmed(text)) {
    if (c < '0' || c > '9' || number > 100000000) break;
    number = number * 10 + (c - '0');
  }
  return number;
}

bool is_stamp(const Property& property) {
  return property.named("DTSTAMP") || property.named("LAST-MODIFIED") || property.named("CREATED");
}

}  // namespace

int sequence_of(const Component& event) {
  const Property* sequence = event.find("SEQUENCE");
  return sequence ? number_of(sequence->value) : 0;
}

std::string Importer::name_event(const Component& event) {
  const Property* named = event.find("UID");
  std::string uid = named ? unescape_text(trimmed(named->value)) : std::string();
  if (!uid.empty()) return uid;
  // Alike ones are told apart by their order.
  uid = made_up_uid(event);
  const int before = nameless_[uid]++;
  return before == 0 ? uid : uid + "-" + std::to_string(before + 1);
}

void Importer::find_uid(std::size_t index) {
  const ScannedComponent& component = calendar_.components[index];
  if (!parsed_.parse(calendar_.text_of(component), component.line)) {
    problems_->add(component.line, "event cannot be read; left out");
    ++counts_->skipped;
    return;
  }
  const Component& event = parsed_.root();
  std::string uid = name_event(event);
  if (const Property* occurrence = event.find("RECURRENCE-ID")) {
    if (!take_change(event, uid, *occurrence)) return;
    uids_.changes[uid].push_back(index);
  } else if (take_version(event, uid, uids_)) {
    uids_.masters[uid] = index;
  } else {
    ++counts_->skipped;
    return;
  }
  uids_.of[index] = std::move(uid);
}

// Of several changes of one occurrence the later stands, unless its SEQUENCE is lower.
bool Importer::take_change(const Component& event, const std::string& uid,
                           const Property& occurrence) {
  const Version version{event.line, calendar_number_, sequence_of(event), 0, 0, 0};
  std::size_t key = mixed(std::hash<std::string>()(uid), occurrence.parameters);
  key = mixed(key, occurrence.value);
  const auto [known, added] = in_file_.try_emplace(key, version);
  if (added) return true;
  ++counts_->skipped;
  const bool older = version.sequence < known->second.sequence;
  problems_->add(older ? event.line : known->second.line,
                 older ? "a newer change of the same occurrence came before; this one is left out"
                       : "a change of the same occurrence follows; this one is left out");
  if (!older) known->second = version;
  return !older;
}

// Several events of one UID are versions of one, of which the later stands (not a lower SEQUENCE),
// or, where nothing says that, different ones that an unlucky writer gave one name: then each is
// shown. False for one that gives way.
bool Importer::take_version(const Component& event, std::string& uid, Uids& uids) {
  Version version{event.line, calendar_number_, sequence_of(event), 0, 0, 0};
  for (const Property& property : event.properties) {
    if (property.named("DTSTART")) version.start = mixed(version.start, property.raw);
    if (is_stamp(property))
      version.stamp = mixed(version.stamp, property.raw);
    else
      version.content = mixed(version.content, property.raw);
  }
  for (const Component& child : event.children) version.content = mixed(version.content, child.raw);
  const std::hash<std::string> hash;
  auto [known, added] = in_file_.try_emplace(hash(uid), version);
  if (added) return true;
  const auto differs = [&](const Version& other) {
    return other.sequence == version.sequence && other.content != version.content &&
           (other.start != version.start || other.stamp == version.stamp);
  };
  if (differs(known->second)) {
    uid += "#" + made_up_uid(event).substr(0, 16);
    std::tie(known, added) = in_file_.try_emplace(hash(uid), version);
    if (added) return true;
  }
  Version& earlier = known->second;
  const bool older = version.sequence < earlier.sequence;
  problems_->add(older ? event.line : earlier.line,
                 older ? "an event of the same UID came before and is newer; this one is left out"
                       : "an event of the same UID follows; this one is left out");
  if (older) return false;
  if (earlier.calendar != calendar_number_) uids.again.insert(uid);
  ++counts_->skipped;
  earlier = version;
  return true;
}

}  // namespace orvello
