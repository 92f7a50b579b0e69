#include "editor/chooser_rules.h"

#include <algorithm>
#include <set>
#include <tuple>

#include "base/letters.h"
#include "settings/category_text.h"
#include "store/appointment_form.h"

namespace orvello {
namespace {

using Cells = std::array<TextView, kLetterCells>;
constexpr Cells kLatinCells = {u"#AB", u"CDE", u"FGH", u"IJK", u"LMN",
                               u"OPQ", u"RST", u"UVW", u"XYZ"};
// What hardly begins a word stands with its neighbour: see bar_letter().
constexpr Cells kCyrillicCells = {u"#АБ", u"ВГД", u"ЕЖЗ", u"ИКЛ", u"МНО",
                                  u"ПРС", u"ТУФ", u"ХЦЧ", u"ШЭЯ"};

// The letter under which a name is looked for.
char16_t bar_letter(char16_t unit) {
  const char16_t letter = capital(unit);
  switch (letter) {
    case u'Ё':
      return u'Е';
    case u'Й':
      return u'И';
    case u'Щ':
      return u'Ш';
    case u'Ъ':
    case u'Ы':
    case u'Ь':
      return u'Э';
    case u'Ю':
      return u'Я';
    default:
      return letter;
  }
}

Text kept_name(TextView name) { return cut(name, kAttendeeNameLength); }
Text kept_address(TextView address) { return cut(address, kAttendeeAddressLength); }

// Single blanks between what there is of a name. Who has none is known by the company.
Text full_name(const StoreContact& contact) {
  Text name;
  for (const Text* part : {&contact.first_name, &contact.middle_name, &contact.last_name}) {
    const TextView word = trimmed(*part);
    if (word.empty()) continue;
    if (!name.empty()) name += u' ';
    name += word;
  }
  if (name.empty()) name = trimmed(contact.file_as);
  return name.empty() ? Text(trimmed(contact.company)) : name;
}

// Who attends already, by name and address as far as both are kept.
class Attending {
 public:
  explicit Attending(const std::vector<StoreRecipient>& attendees) : attendees_(attendees) {
    for (std::size_t i = 0; i < attendees.size(); ++i)
      by_name_.emplace_back(kept_name(attendees[i].name), kept_address(attendees[i].address), i);
    std::sort(by_name_.begin(), by_name_.end());
    met_.resize(attendees.size());
  }

  // Null: nobody of that name and address. All who are equal are met with it.
  const StoreRecipient* meet(const Text& name, const Text& address) {
    const StoreRecipient* found = nullptr;
    const Entry wanted(name, address, 0);
    for (auto at = std::lower_bound(by_name_.begin(), by_name_.end(), wanted);
         at != by_name_.end() && std::get<0>(*at) == name && std::get<1>(*at) == address; ++at) {
      const std::size_t index = std::get<2>(*at);
      if (!found) found = &attendees_[index];
      met_[index] = true;
    }
    return found;
  }

  std::vector<StoreRecipient> others() const {
    std::vector<StoreRecipient> others;
    for (std::size_t i = 0; i < attendees_.size(); ++i)
      if (!met_[i]) others.push_back(attendees_[i]);
    return others;
  }

 private:
  using Entry = std::tuple<Text, Text, std::size_t>;
  const std::vector<StoreRecipient>& attendees_;
  std::vector<Entry> by_name_;
  std::vector<bool> met_;
};

}  // namespace

std::vector<Text> labels_of(TextView categories) {
  std::vector<Text> labels;
  for (const Text& piece : split(categories, u',')) {
    Text label(trimmed(cut(trimmed(piece), kLabelLength)));
    if (!label.empty()) labels.push_back(std::move(label));
  }
  removeDuplicateLabels(labels);
  return labels;
}

std::vector<ChooserRow> category_rows(std::vector<Text> labels, const std::vector<Text>& chosen,
                                      const Locale& locale) {
  std::sort(labels.begin(), labels.end(), [&](const Text& a, const Text& b) {
    const int order = locale.compare(a, b);
    return order != 0 ? order < 0 : a < b;
  });
  const std::set<TextView> wanted(chosen.begin(), chosen.end());
  std::set<TextView> met;
  std::vector<ChooserRow> rows;
  for (const Text& label : labels)
    if (!label.empty() && met.insert(label).second)
      rows.push_back({.name = label, .chosen = wanted.count(label) != 0});
  return rows;
}

Text chosen_categories(const std::vector<ChooserRow>& rows) {
  Text joined;
  for (const ChooserRow& row : rows) {
    if (!row.chosen) continue;
    if (!joined.empty()) joined += u',';
    joined += row.name;
  }
  return joined;
}

std::vector<ChooserRow> attendee_rows(const std::vector<StoreContact>& contacts,
                                      const std::vector<StoreRecipient>& attendees) {
  Attending attending(attendees);
  std::vector<ChooserRow> found;
  for (const StoreContact& contact : contacts) {
    const Text name = full_name(contact);
    for (const Text& email : contact.email) {
      const TextView address = trimmed(email);
      if (address.empty()) continue;
      ChooserRow row{name, Text(address), contact.company, {}, false};
      row.recipient = {kept_name(name), kept_address(address)};
      const StoreRecipient* attends = attending.meet(row.recipient.name, row.recipient.address);
      row.chosen = attends != nullptr;
      if (attends) row.recipient = *attends;
      found.push_back(std::move(row));
    }
  }
  std::vector<ChooserRow> rows;
  for (StoreRecipient& other : attending.others())
    rows.push_back({other.name, other.address, {}, std::move(other), true});
  rows.insert(rows.end(), std::make_move_iterator(found.begin()),
              std::make_move_iterator(found.end()));
  return rows;
}

std::vector<StoreRecipient> chosen_attendees(const std::vector<ChooserRow>& rows) {
  std::vector<StoreRecipient> chosen;
  for (const ChooserRow& row : rows)
    if (row.chosen && std::find(chosen.begin(), chosen.end(), row.recipient) == chosen.end())
      chosen.push_back(row.recipient);
  return chosen;
}

void LetterBar::set_rows(const std::vector<ChooserRow>& rows) {
  int cyrillic = 0, other = 0;
  for (const ChooserRow& row : rows)
    if (!row.name.empty() && is_letter(row.name[0]))
      ++(is_cyrillic(row.name[0]) ? cyrillic : other);
  cyrillic_ = cyrillic > other;
}

TextView LetterBar::label(int cell) const {
  return (cyrillic_ ? kCyrillicCells : kLatinCells)[static_cast<std::size_t>(cell)];
}

char16_t LetterBar::tap(int cell) {
  symbol_ = cell == cell_ ? (symbol_ + 1) % 3 : 0;
  cell_ = cell;
  return label(cell)[static_cast<std::size_t>(symbol_)];
}

int first_row_of(const std::vector<ChooserRow>& rows, char16_t symbol) {
  const auto found = std::find_if(rows.begin(), rows.end(), [symbol](const ChooserRow& row) {
    if (symbol == u'#') return row.name.empty() || !is_letter(row.name[0]);
    return !row.name.empty() && bar_letter(row.name[0]) == symbol;
  });
  return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

}  // namespace orvello
