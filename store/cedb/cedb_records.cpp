#include "store/cedb/cedb_records.h"

#include <algorithm>

#include "ports/record_order.h"

namespace orvello {
namespace {

// What a read allocates, freed once, also after a read that failed.
class CedbBuffer {
 public:
  explicit CedbBuffer(const CedbCalls& calls) : calls_(calls) {}
  ~CedbBuffer() {
    if (bytes) calls_.LocalFree(bytes);
  }
  CedbBuffer(const CedbBuffer&) = delete;
  CedbBuffer& operator=(const CedbBuffer&) = delete;
  BYTE* bytes = nullptr;
  DWORD size = 0;

 private:
  const CedbCalls& calls_;
};

std::optional<RecordProperty> property_from(const CePropVal& stored) {
  if (stored.flags & kPropNotFound) return std::nullopt;
  switch (property_type(stored.id)) {
    case kTypeShort:
      return RecordProperty{static_cast<PropertyId>(stored.id), stored.short_value};
    case kTypeLong:
      return RecordProperty{static_cast<PropertyId>(stored.id),
                            static_cast<std::int32_t>(stored.long_value)};
    case kTypeText: {
      Text text;
      for (const wchar_t* unit = stored.text; unit && *unit != 0; ++unit)
        text.push_back(static_cast<char16_t>(*unit));
      return RecordProperty{static_cast<PropertyId>(stored.id), std::move(text)};
    }
    default:
      return std::nullopt;
  }
}

}  // namespace

bool fits_name(TextView name) {
  return !name.empty() && name.size() < kDatabaseNameUnits && name.find(u'\0') == name.npos;
}

bool fits_record(const Record& record) {
  return !record.empty() && well_formed(record) &&
         std::none_of(record.begin(), record.end(), [](const RecordProperty& property) {
           const Text* text = std::get_if<Text>(&property.value);
           return text && text->find(u'\0') != text->npos;
         });
}

DatabaseError read_records(const CedbCalls& calls, HANDLE database,
                           std::vector<ReadRecord>& records) {
  records.clear();
  CedbBuffer buffer(calls);
  WORD count = 0;
  while (const CeOid id = calls.CeReadRecordPropsEx(database, kAllowRealloc, &count, nullptr,
                                                    &buffer.bytes, &buffer.size, nullptr)) {
    ReadRecord record{static_cast<RecordId>(id), {}};
    const auto* stored = reinterpret_cast<const CePropVal*>(buffer.bytes);
    for (WORD i = 0; stored && i < count; ++i)
      if (auto property = property_from(stored[i]))
        record.properties.push_back(std::move(*property));
    records.push_back(std::move(record));
  }
  return calls.GetLastError() == ERROR_NO_MORE_ITEMS ? DatabaseError::none : cedb_reason(calls);
}

DatabaseError write_record(const CedbCalls& calls, HANDLE database, CeOid& id,
                           const Record& properties) {
  if (!fits_record(properties)) return DatabaseError::invalid_parameter;
  std::vector<CePropVal> values(properties.size());
  std::vector<std::wstring> texts(properties.size());
  for (std::size_t i = 0; i < properties.size(); ++i) {
    values[i] = {};
    values[i].id = properties[i].id;
    if (const auto* text = std::get_if<Text>(&properties[i].value)) {
      texts[i].assign(text->begin(), text->end());
      values[i].text = texts[i].data();
    } else if (const auto* number = std::get_if<std::int32_t>(&properties[i].value)) {
      values[i].long_value = *number;
    } else {
      values[i].short_value = std::get<std::int16_t>(properties[i].value);
    }
  }
  const CeOid written =
      calls.CeWriteRecordProps(database, id, static_cast<WORD>(values.size()), values.data());
  if (written == 0) return cedb_reason(calls);
  id = written;
  return DatabaseError::none;
}

}  // namespace orvello
