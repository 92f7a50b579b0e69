// The search: an edit, and below it what has been found so far, over all years. The texts of all
// appointments are read in short steps as it opens, and again when they change, and are kept for as
// long as it stands.
#pragma once

#include <optional>

#include "app/list_pointer.h"
#include "app/search_rows.h"
#include "ports/host.h"
#include "store/store_session.h"
#include "store/text_search.h"

namespace orvello {

struct SearchContext {
  const Host& host;
  StoreSession& session;
  const SettingsRecord& settings;
  const ScreenLayout& screen;  // the forms'
  Language language;
  Canvas& measure;
  const int& changes;  // another number whenever the store has told of a change
};

// Modal. `typed` is what the edit begins with, and what it held in the end. Nothing: closed without
// a choice.
std::optional<TextHit> ask_search(const SearchContext& context, Text& typed);

class SearchProcedure : public DialogProcedure {
 public:
  SearchProcedure(const SearchContext& context, Text typed)
      : c_(context), typed_(std::move(typed)) {}
  const Text& typed() const { return typed_; }
  const std::optional<TextHit>& chosen() const { return chosen_; }

  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  void open(Dialog& dialog);
  void begin_reading(Dialog& dialog);
  void read_some(Dialog& dialog);
  void watch(Dialog& dialog);
  void search(Dialog& dialog);
  void select(Dialog& dialog, int hit);
  void choose(Dialog& dialog, int hit);
  void list_event(Dialog& dialog, const DialogEvent& event);
  void list_key(Dialog& dialog, std::uint32_t key);
  int hit_of(int row) const;
  SearchLook look(Dialog& dialog) const;
  SearchRows rows_now(Dialog& dialog);

  enum class Reading { under_way, done, failed };

  const SearchContext& c_;
  Text typed_;
  TextIndex index_, next_;  // what is searched; what is being read
  bool indexed_ = false;    // there is something to search: a reading has come to its end
  Reading reading_ = Reading::under_way;
  std::int32_t read_to_ = 0;
  int seen_changes_ = 0;
  TextHits hits_;
  std::vector<int> row_hits_;
  int selected_ = -1;  // a hit
  int width_ = 0;      // of the list when its rows were made
  ListPointer pointer_;
  std::optional<TextHit> chosen_;
};

}  // namespace orvello
