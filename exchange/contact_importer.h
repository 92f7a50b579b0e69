// Cards into contacts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "exchange/card_reader.h"
#include "exchange/first_fault.h"
#include "exchange/import.h"
#include "exchange/problem_list.h"

namespace orvello {

class ImportWatcher;

class ContactImporter {
 public:
  // Without `writes` the store is only asked what it has.
  ContactImporter(RecordStore& store, bool writes, ImportWatcher* watcher)
      : store_(store), writes_(writes), watcher_(watcher), failed_(store) {}

  // A card's text, whose first line has that number in its file.
  void import_card(std::string_view text, int line, ImportCounts& counts, ProblemList& problems);
  const FirstFault& fault() const { return failed_; }

 private:
  // A contact that this import has put, by the hash of its text.
  struct Taken {
    std::size_t text;
    Text file_as;
  };
  bool know_contacts();
  // The UID of the contact that the card is; nothing where this import had the same card already.
  std::optional<std::string> place_of(const StoreContact& contact, const std::string& uid,
                                      std::string_view text);
  std::optional<std::string> place_of_nameless(const std::string& made_up, std::string_view text);
  bool is_as_stored(const std::string& uid, std::string_view text);
  void put(StoreContact& contact, const std::string& uid, std::string_view text, int line,
           ImportCounts& counts, ProblemList& problems);

  RecordStore& store_;
  bool writes_;
  ImportWatcher* watcher_;
  FirstFault failed_;
  bool known_ = false;
  std::unordered_map<std::string, std::int32_t> oids_;     // by UID; 0: not put, only counted
  std::unordered_map<std::string, std::int32_t> unnamed_;  // those without a card, by made-up UID
  std::unordered_map<std::string, Taken> taken_;
};

}  // namespace orvello
