#include "tests/win32/standin/standin_file.h"

#include <fstream>

namespace orvello::test {
namespace {

constexpr std::int32_t kMark = 0x50494D31;
constexpr std::int32_t kMostPieces = 1 << 24;

// One way through everything, that reads or writes.
class Passage {
 public:
  Passage(const std::string& path, bool writes)
      : file_(path, std::ios::binary | (writes ? std::ios::out : std::ios::in)), writes_(writes) {}
  bool good() const { return file_.good(); }

  template <typename Value>
  void plain(Value& value) {
    if (writes_)
      file_.write(reinterpret_cast<const char*>(&value), sizeof value);
    else
      file_.read(reinterpret_cast<char*>(&value), sizeof value);
  }
  // A list, a text, or what may be missing: how many, and each.
  template <typename Many, typename Each>
  void many(Many& list, Each each) {
    auto count = static_cast<std::int32_t>(list.size());
    plain(count);
    if (!good() || count < 0 || count > kMostPieces) return file_.setstate(std::ios::failbit);
    list.resize(static_cast<std::size_t>(count));
    for (auto& one : list) each(one);
  }
  template <typename Letters>
  void text(Letters& letters) {
    many(letters, [this](auto& letter) { plain(letter); });
  }

  void people(std::vector<StoreRecipient>& recipients) {
    many(recipients, [this](StoreRecipient& one) {
      text(one.name);
      text(one.address);
    });
  }
  void fields(AppointmentFields& fields) {
    for (Text* one : {&fields.subject, &fields.location, &fields.categories, &fields.body})
      text(*one);
    text(fields.body_ink);
    plain(fields.start);
    plain(fields.end);
    plain(fields.all_day);
    plain(fields.reminder_set);
    plain(fields.reminder_minutes);
    plain(fields.sensitivity);
    plain(fields.busy_status);
  }
  void exception(AppointmentException& one) {
    plain(one.original_start);
    plain(one.deleted);
    fields(one.fields);
    plain(one.start);
    plain(one.end);
    people(one.recipients);
  }
  void record(AppointmentRecord& record) {
    plain(record.oid);
    text(record.uid);
    fields(record.fields);
    plain(record.start);
    plain(record.end);
    plain(record.pattern);
    many(record.exceptions, [this](AppointmentException& one) { exception(one); });
    people(record.recipients);
  }
  void contact(StoreContact& contact) {
    plain(contact.oid);
    for (Text* one : {&contact.file_as, &contact.first_name, &contact.middle_name,
                      &contact.last_name, &contact.company, &contact.email[0], &contact.email[1],
                      &contact.email[2], &contact.categories})
      text(*one);
  }

  template <typename Item>
  void all(std::map<std::int32_t, Item>& items, void (Passage::*way)(Item&)) {
    std::vector<Item> list;
    for (auto& [oid, item] : items) list.push_back(std::move(item));
    many(list, [&](Item& item) { (this->*way)(item); });
    items.clear();
    for (Item& item : list) {
      const std::int32_t oid = item.oid;
      items.emplace(oid, std::move(item));
    }
  }
  bool whole(MemoryStore::Contents& contents) {
    std::int32_t mark = kMark;
    plain(mark);
    if (mark != kMark) return false;
    plain(contents.next_oid);
    all(contents.records, &Passage::record);
    all(contents.contacts, &Passage::contact);
    file_.flush();
    return good();
  }

 private:
  std::fstream file_;
  bool writes_;
};

}  // namespace

bool load_standin(const std::string& path, MemoryStore::Contents& contents) {
  return Passage(path, false).whole(contents);
}

bool save_standin(const std::string& path, MemoryStore::Contents contents) {
  return Passage(path, true).whole(contents);
}

}  // namespace orvello::test
