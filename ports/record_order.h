// The order of records under a sort property, for every implementation of the databases.
#pragma once

#include <algorithm>

#include "ports/record_databases.h"

namespace orvello {

inline const RecordProperty* find_property(const Record& record, PropertyId id) {
  const auto found =
      std::find_if(record.begin(), record.end(),
                   [id](const RecordProperty& property) { return property.id == id; });
  return found == record.end() ? nullptr : &*found;
}

// A missing property comes first; texts compare by UTF-16 units.
inline bool comes_before(const Record& a, const Record& b, PropertyId sort_property) {
  const RecordProperty* left = find_property(a, sort_property);
  const RecordProperty* right = find_property(b, sort_property);
  if (!left || !right) return !left && right;
  return left->value < right->value;
}

// Each value fits the type in its id.
inline bool well_formed(const Record& record) {
  return std::all_of(record.begin(), record.end(), [](const RecordProperty& property) {
    switch (property_type(property.id)) {
      case kTypeShort:
        return std::holds_alternative<std::int16_t>(property.value);
      case kTypeLong:
        return std::holds_alternative<std::int32_t>(property.value);
      case kTypeText:
        return std::holds_alternative<Text>(property.value);
      default:
        return false;
    }
  });
}

}  // namespace orvello
