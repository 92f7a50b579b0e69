#include <algorithm>

#include "store/pim/pim_folder.h"
#include "store/pim/pim_store.h"

namespace orvello {
namespace {

constexpr std::size_t kRecordsAtOnce = 100;

PimKind kind_in(int folder) {
  return folder == kFolderContacts ? PimKind::contact
         : folder == kFolderTasks  ? PimKind::task
                                   : PimKind::appointment;
}

constexpr struct {
  PimName name;
  Text StoreContact::*member;
} kContactTexts[] = {{PimName::file_as, &StoreContact::file_as},
                     {PimName::first_name, &StoreContact::first_name},
                     {PimName::middle_name, &StoreContact::middle_name},
                     {PimName::last_name, &StoreContact::last_name},
                     {PimName::company_name, &StoreContact::company},
                     {PimName::categories, &StoreContact::categories}};
constexpr PimName kAddresses[] = {PimName::email1_address, PimName::email2_address,
                                  PimName::email3_address};

bool read_contact(const PimObject& item, StoreContact& contact) {
  const auto read = [&](PimName name, Text& text) {
    auto told = item.text(name);
    if (told) text = std::move(*told);
    return told.has_value();
  };
  const auto oid = item.number(PimName::oid);
  if (!oid) return false;
  contact.oid = *oid;
  for (const auto& [name, member] : kContactTexts)
    if (!read(name, contact.*member)) return false;
  for (std::size_t i = 0; i < std::size(kAddresses); ++i)
    if (!read(kAddresses[i], contact.email[i])) return false;
  return true;
}

bool write_contact(const PimObject& item, const StoreContact& contact) {
  const bool texts = std::all_of(
      std::begin(kContactTexts), std::end(kContactTexts),
      [&](const auto& text) { return item.put(text.name, PimValue::text(contact.*text.member)); });
  if (!texts) return false;
  for (std::size_t i = 0; i < std::size(kAddresses); ++i)
    if (!item.put(kAddresses[i], PimValue::text(contact.email[i]))) return false;
  return item.call(PimName::save);
}

}  // namespace

// What the views see is the platform's own collections; here whole records are asked for.
bool PimStore::query(const ItemQuery& query, OccurrenceList& list) {
  problem_.clear();
  auto objects = folder_items(kFolderCalendar);
  if (!objects) return false;
  PimItems items(std::move(*objects), form_, numbers_, time_, [this] { cannot_read(); });
  items.want(query.wanted);
  SeriesScratch scratch;
  bool whole = true;
  const auto visit = [&](const StoreItem& item) {
    whole = !query.stopped();
    if (whole && item.summary->recurring && query.occurrences) {
      const auto record = load(item.summary->oid);
      auto series = record && *record ? make_series(**record, time_) : std::nullopt;
      whole = series || (record && !*record);  // gone meanwhile
      if (!series) return whole;
      series->summary = item.summary;
      append_occurrences(*series, query.bounds, time_, scratch, list);
    } else if (whole && query.bounds.admit(whole_day(item.start), whole_day(item.end))) {
      list.show(item.summary);
      list.add(to_seconds(item.start), to_seconds(item.end));
    }
    return whole;
  };
  return each_item(items, {}, visit) && whole;
}

Result<std::vector<std::int32_t>> PimStore::oids(std::optional<Day> from_day,
                                                 std::optional<Day> to_day) {
  ItemQuery wanted{{}, from_day || to_day, {}, nullptr};
  wanted.bounds.end_from = from_day.value_or(kFirstDay);
  wanted.bounds.start_to = to_day.value_or(kLastDay);
  OccurrenceList list;
  if (!query(wanted, list)) return Result<std::vector<std::int32_t>>::failure(problem_);
  return list.oids();
}

// Who begins behind no number begins a walk: the numbers are asked for once.
Result<std::vector<AppointmentRecord>> PimStore::records_after(std::int32_t after) {
  using Records = Result<std::vector<AppointmentRecord>>;
  problem_.clear();
  if (after == 0) {
    if (!uids_.read()) return Records::failure(uids_.problem());
    write_uids();  // others may come to know this device's name from what is read
    all_oids_.clear();
    const auto items = folder_items(kFolderCalendar);
    const bool whole =
        items && (!*items || each_part(*items, PimKind::appointment, [&](const PimObject& one) {
          const auto oid = one.number(PimName::oid);
          if (oid) all_oids_.push_back(numbers_.known(*oid));
          return oid.has_value();
        }));
    if (!whole) return cannot_read(), Records::failure(problem_);
    std::sort(all_oids_.begin(), all_oids_.end());
  }
  std::vector<AppointmentRecord> some;
  for (auto at = std::upper_bound(all_oids_.begin(), all_oids_.end(), after);
       at != all_oids_.end() && some.size() < kRecordsAtOnce; ++at) {
    const auto found = item(*at);
    auto record = found && *found ? record_of(*found, *at, false) : std::nullopt;
    if (record)
      some.push_back(std::move(*record));
    else if (!found || *found)
      return Records::failure(problem_);
  }
  return some;
}

std::optional<std::vector<StoreContact>> PimStore::contacts() {
  problem_.clear();
  std::vector<StoreContact> list;
  const auto items = folder_items(kFolderContacts);
  if (items && (!*items || each_part(*items, PimKind::contact, [&](const PimObject& one) {
        return read_contact(one, list.emplace_back());
      })))
    return list;
  cannot_read();
  return std::nullopt;
}

std::int32_t PimStore::put_contact(const StoreContact& contact) {
  problem_.clear();
  const auto person = contact_item(contact.oid);
  if (!person || !*person || !write_contact(*person, contact)) return cannot_write(), 0;
  const auto oid = person->number(PimName::oid);
  if (!oid) cannot_write();
  return oid.value_or(0);
}

bool PimStore::erase_contact(std::int32_t oid) {
  problem_.clear();
  const auto person = oid == 0 ? std::nullopt : contact_item(oid);
  return (person && *person && person->call(PimName::remove)) || cannot_write();
}

std::optional<std::vector<std::pair<Text, int>>> PimStore::category_texts(int folder) {
  problem_.clear();
  std::map<Text, int> uses;
  const auto items = folder_items(folder);
  const bool whole =
      items && (!*items || each_part(*items, kind_in(folder), [&](const PimObject& one) {
        auto text = one.text(PimName::categories);
        if (text && !text->empty()) ++uses[std::move(*text)];
        return text.has_value();
      }));
  if (!whole) return cannot_read(), std::nullopt;
  return std::vector<std::pair<Text, int>>(uses.begin(), uses.end());
}

std::optional<Text> PimStore::category_text(int number) {
  problem_.clear();
  std::optional<Text> labels;
  const auto from = folder(number);
  if (!from) return std::nullopt;
  if (!read_folder_labels(*from, labels)) return cannot_read(), std::nullopt;
  return labels ? std::move(labels) : RecordCalendarStore::category_text(number);
}

}  // namespace orvello
