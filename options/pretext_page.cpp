// The Pretext page: what is added or deleted is stored at once.
#include "options/settings_pages.h"
#include "options/sorted_texts.h"
#include "resources/pretext_page_ids.h"
#include "settings/pretexts.h"
#include "store/wait_cursor.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr TextView kPretextLists[] = {kSubjectPretexts, kLocationPretexts};
constexpr std::size_t kPretextLength = 79;  // one less than the edit takes, deliberately

class PretextPage : public DialogProcedure {
 public:
  explicit PretextPage(const OptionsContext& context) : context_(context) {}

  void handle(Dialog& dialog, const DialogEvent& event) override {
    switch (event.kind) {
      case Event::init:
        dialog.choice(kPretextChoice)->set_rows({u"Subject text", u"Location text"});
        dialog.choice(kPretextChoice)->select(0);
        return fill(dialog);
      case Event::changed:
        if (event.control == kPretextChoice) fill(dialog);
        return;
      case Event::command:
        if (event.control == kPretextAdd) add(dialog);
        if (event.control == kPretextDelete) erase(dialog);
        return;
      case Event::page_shown:
        return dialog.focus(kPretextEdit);
      case Event::page_left:
        return context_.host.input.hide_input_panel();
      default:
        return;
    }
  }

 private:
  TextView list(Dialog& dialog) const {
    return kPretextLists[dialog.choice(kPretextChoice)->selected() == 1 ? 1 : 0];
  }

  // What could be read of it, when not all could.
  bool read(Dialog& dialog, std::vector<Text>& texts) const {
    const bool whole = loadPreTextToLB(context_.volume, texts, list(dialog));
    sort_texts(texts, context_.host.locale);
    return whole;
  }

  void fill(Dialog& dialog) {
    const WaitCursor waiting(context_.host.window);
    texts_.clear();
    read(dialog, texts_);
    dialog.list(kPretextList)->set_rows(texts_);
  }

  // Rows change, what is selected stays so.
  void show(Dialog& dialog) const {
    ListControl& rows = *dialog.list(kPretextList);
    const std::vector<Text> before = rows.rows();
    std::vector<int> selected;
    for (const int row : rows.selected())
      selected.push_back(row_of_text(texts_, before[static_cast<std::size_t>(row)]));
    std::erase(selected, -1);
    rows.set_rows(texts_);
    rows.select(selected);
  }

  // A text that is there already is not added again, silently. One that could not be stored stays
  // in the edit.
  void add(Dialog& dialog) {
    const Text text = cut(dialog.text(kPretextEdit), kPretextLength);
    if (trimmed(text).empty()) return;
    const WaitCursor waiting(context_.host.window);
    if (savePreTextToDB(context_.volume, text, list(dialog)) == 1) {
      insert_sorted(texts_, text, context_.host.locale);
      show(dialog);
    }
    const int row = row_of_text(texts_, text);
    if (row >= 0) {
      dialog.list(kPretextList)->show_row(row);
      dialog.set_text(kPretextEdit, u"");
    }
    dialog.focus(kPretextEdit);
  }

  void erase(Dialog& dialog) {
    const WaitCursor waiting(context_.host.window);
    const std::vector<int> selected = dialog.list(kPretextList)->selected();
    for (auto row = selected.rbegin(); row != selected.rend(); ++row)
      if (!erase_one(dialog, static_cast<std::size_t>(*row))) break;
    if (!selected.empty()) show(dialog);
  }

  // False when the others are better left: it is still there.
  bool erase_one(Dialog& dialog, std::size_t row) {
    if (deletePreTextFromDB(context_.volume, texts_[row], list(dialog)) == 1) {
      texts_.erase(texts_.begin() + static_cast<std::ptrdiff_t>(row));
      return true;
    }
    // Another program may have been quicker.
    const Text text = texts_[row];
    std::vector<Text> now;
    if (!read(dialog, now) || row_of_text(now, text) >= 0) return false;
    texts_.erase(texts_.begin() + static_cast<std::ptrdiff_t>(row));
    return true;
  }

  const OptionsContext& context_;
  std::vector<Text> texts_;  // the rows
};

}  // namespace

std::unique_ptr<DialogProcedure> make_pretext_page(const OptionsContext& context) {
  return std::make_unique<PretextPage>(context);
}

}  // namespace orvello
