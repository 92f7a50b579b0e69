#include "store/record_texts.h"

#include "store/series_next.h"

namespace orvello {
namespace {

using VisitTexts = std::function<void(StoreTexts&)>;

StoreTexts texts_of(AppointmentFields& fields, std::int32_t oid, bool recurring,
                    std::vector<StoreRecipient>& recipients) {
  StoreTexts texts;
  texts.item.summary = make_summary(fields, oid, recurring);
  texts.body = std::move(fields.body);
  texts.recipients = std::move(recipients);
  return texts;
}

// False when a zone could not be read.
bool set_times(StoreTexts& texts, LocalSeconds start, LocalSeconds end, const std::string& zone,
               DeviceTime& time) {
  const auto known = time.zone(zone);
  if (!known) return false;
  const auto span = time.shown(start, end, *known, texts.item.summary->all_day);
  texts.item.start = to_calendar_date(span.start);
  texts.item.end = to_calendar_date(span.end);
  return true;
}

bool visit_record(AppointmentRecord& record, LocalSeconds now, DeviceTime& time,
                  SeriesScratch& scratch, const VisitTexts& visit) {
  if (!record.recurring()) {
    StoreTexts texts = texts_of(record.fields, record.oid, false, record.recipients);
    if (!set_times(texts, record.start, record.end, record.zone, time)) return false;
    visit(texts);
    return true;
  }
  const auto series = make_series(record, time);
  if (!series) return false;
  StoreTexts texts = texts_of(record.fields, record.oid, true, record.recipients);
  if (const auto shown = next_or_last(*series, now, time, scratch)) {
    texts.item.start = shown->start;
    texts.item.end = shown->end;
    texts.item.many = shown->many;
  }
  visit(texts);
  for (AppointmentException& one : record.exceptions) {
    if (one.deleted) continue;
    StoreTexts changed = texts_of(one.fields, record.oid, true, one.recipients);
    changed.changed_occurrence = true;
    if (!set_times(changed, one.start, one.end, one.zone, time)) return false;
    visit(changed);
  }
  return true;
}

}  // namespace

std::optional<std::int32_t> each_record_text(RecordCalendarStore& store, std::int32_t after,
                                             LocalSeconds now, const VisitTexts& visit) {
  auto records = store.records_after(after);
  if (!records) return std::nullopt;
  SeriesScratch scratch;
  for (AppointmentRecord& record : *records)
    if (!visit_record(record, now, store.time(), scratch, visit)) return std::nullopt;
  return records->empty() ? 0 : records->back().oid;
}

}  // namespace orvello
