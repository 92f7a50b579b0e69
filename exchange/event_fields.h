// The lines that single fields of an appointment become.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "base/text.h"
#include "exchange/content_line.h"
#include "ports/calendar_store.h"

namespace orvello {

// What a property of a kept event is about; those of a kind are replaced together.
enum class PropertyKind {
  other,
  uid,
  stamp,
  subject,
  location,
  body,
  categories,
  times,
  recurrence,
  excluded,
  sensitivity,
  busy,
  recipients,
  ink
};
inline constexpr std::size_t kPropertyKinds = 14;

PropertyKind kind_of(const Property& property);

void append_text(std::string& out, std::string_view name, TextView value);  // nothing when empty
std::string categories_line(TextView categories);
std::string busy_lines(BusyStatus status);
std::string attendee_line(const StoreRecipient& recipient);
std::string ink_line(std::string_view ink);
std::string trigger_line(std::int32_t minutes);
std::string alarm_text(TextView subject, std::int32_t minutes);

// Whether a kept event says that it is cancelled.
bool is_cancelled_text(std::string_view residue);

void note_tzids(const Component& component, std::set<std::string>& tzids);

}  // namespace orvello
