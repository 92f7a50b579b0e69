// The Profiles page: what is saved or deleted is so at once.
#include <utility>

#include "options/profiles_rules.h"
#include "options/settings_pages.h"
#include "options/sorted_texts.h"
#include "resources/profiles_page_ids.h"
#include "settings/category_text.h"
#include "settings/profiles.h"
#include "settings/registry_access.h"
#include "store/device_labels.h"
#include "store/wait_cursor.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

// Of a name that is looked up; one more than of one that is saved, deliberately.
constexpr std::size_t kSoughtLength = kNewProfileLength + 1;

class ProfilesPage : public DialogProcedure {
 public:
  explicit ProfilesPage(const OptionsContext& context) : context_(context) {}

  void handle(Dialog& dialog, const DialogEvent& event) override {
    switch (event.kind) {
      case Event::init:
        return open(dialog);
      case Event::page_shown:
        return look_again(dialog);
      case Event::page_left:
        return context_.host.input.hide_input_panel();
      case Event::page_applied:
        return context_.commands.rebuild_profile_menu();
      case Event::command:
        return pressed(dialog, event.control);
      case Event::changed:
        if (event.control == kProfilesName) name_changed(dialog);
        return;
      case Event::taken:
        if (event.control == kProfilesName) name_taken(dialog);
        return;
      case Event::focus_gained:
        if (event.control == kProfilesName) dialog.focus(kProfilesName, Caret::end);
        return;
      case Event::focus_lost:
        if (event.control == kProfilesName) context_.host.input.hide_input_panel();
        return;
      default:
        return;
    }
  }

 private:
  MessageBoxes& boxes() const { return context_.host.boxes; }
  ListControl& list(Dialog& dialog) const { return *dialog.list(kProfilesList); }
  Text name_in(Dialog& dialog, std::size_t most) const {
    return meant_profile(dialog.text(kProfilesName), names_, most);
  }

  void open(Dialog& dialog) {
    const WaitCursor waiting(context_.host.window);
    if (auto names = read_names()) names_ = std::move(*names);
    show_names(dialog, 0);
    labels_ = read_labels();
    show_labels(dialog);
    show_profile(dialog);
  }

  std::optional<std::vector<Text>> read_names() const {
    const WaitCursor waiting(context_.host.window);
    ChoiceList combo;
    if (!listProfilesInCombo(context_.volume, combo)) return std::nullopt;
    sort_texts(combo.items, context_.host.locale);
    return std::move(combo.items);
  }

  // What could be read of them.
  std::vector<Text> read_labels() {
    std::vector<Text> labels;
    labels_read_ =
        read_device_labels(context_.volume, context_.platform_generation, context_.session, labels);
    std::erase(labels, Text());
    removeDuplicateLabels(labels);
    return labels;
  }

  void show_names(Dialog& dialog, int row) {
    dialog.choice(kProfilesName)->set_rows(names_);
    dialog.choice(kProfilesName)->select(row);
    shown_name_ = dialog.text(kProfilesName);
    stepped_ = false;
  }

  void show_labels(Dialog& dialog) const {
    list(dialog).set_rows(labels_);
    const bool none = labels_.empty() && labels_read_;
    dialog.set_text(kProfilesHint,
                    load_string(none ? StringId::chooser_no_labels : StringId::profiles_labels,
                                context_.language()));
  }

  // The labels of the profile that stands in the box are selected, and no others.
  void show_profile(Dialog& dialog) {
    loaded_ = name_in(dialog, kSoughtLength);
    unread_ = false;
    std::vector<Text> labels;
    // One that is not there would be made by looking into it.
    if (row_of_text(names_, loaded_) >= 0) unread_ = !loadProfile(context_.volume, loaded_, labels);
    as_loaded_ = rows_of_labels(labels_, labels);
    list(dialog).select(as_loaded_);
    if (!as_loaded_.empty()) list(dialog).show_row(as_loaded_.front());
  }

  // The Category page may have renamed or removed labels, also in the profiles.
  void look_again(Dialog& dialog) {
    if (!labels_read_) return;  // that was told
    const WaitCursor waiting(context_.host.window);
    std::vector<Text> labels = read_labels();
    if (!labels_read_ || labels == labels_) return;
    const std::vector<int> rows = list(dialog).selected();
    std::vector<Text> selected;
    for (const int row : rows) selected.push_back(labels_[static_cast<std::size_t>(row)]);
    const bool as_loaded = rows == as_loaded_;
    labels_ = std::move(labels);
    show_labels(dialog);
    if (as_loaded && !unread_) return show_profile(dialog);
    list(dialog).select(rows_of_labels(labels_, selected));
  }

  void name_changed(Dialog& dialog) {
    const Text standing = dialog.text(kProfilesName);
    if (row_of_text(names_, standing) < 0 && standing.size() > kNewProfileLength)
      dialog.set_text(kProfilesName, cut(standing, kNewProfileLength));
    stepped_ =
        stepped_to_row(std::exchange(shown_name_, dialog.text(kProfilesName)), standing, names_);
    if (stepped_) show_chosen(dialog);
  }

  void name_taken(Dialog& dialog) {
    // What a step showed may have been changed since.
    if (!std::exchange(stepped_, false)) show_chosen(dialog);
  }

  void show_chosen(Dialog& dialog) {
    const WaitCursor waiting(context_.host.window);
    if (!name_in(dialog, kSoughtLength).empty()) return show_profile(dialog);
    as_loaded_.clear();
    list(dialog).select({});
  }

  void pressed(Dialog& dialog, int control) {
    if (control == kProfilesSave) save(dialog);
    if (control == kProfilesDelete) erase(dialog);
    if (control == kProfilesClear) list(dialog).select({});
  }

  void refuse(Dialog& dialog, TextView why) const {
    boxes().show(why, u"Error", BoxIcon::warning, BoxButtons::ok, true);
    dialog.focus(kProfilesName);
  }

  void save(Dialog& dialog) {
    const Text name = name_in(dialog, kNewProfileLength);
    if (name.empty()) return refuse(dialog, u"Must enter a profile name!");
    if (name == kAllProfile) return refuse(dialog, load_string(StringId::box_profile_all, boxes()));
    auto names = read_names();  // another program may have saved some
    if (!names) return;
    const bool there = row_of_text(*names, name) >= 0;
    if (there && !may_replace(name)) return;
    const WaitCursor waiting(context_.host.window);
    const std::vector<int> selected = list(dialog).selected();
    if (!saveProfileInfoToDatabase(context_.volume, Text(kProfilePrefix) + name,
                                   {labels_, selected}))
      return;
    if (!there) insert_sorted(*names, name, context_.host.locale);
    names_ = std::move(*names);
    show_names(dialog, row_of_text(names_, name));
    loaded_ = name;
    as_loaded_ = selected;
    unread_ = false;
    finish(is_active(name));
  }

  // Nobody knows what would be lost of one that was not read, or whose labels are not all listed.
  bool may_replace(const Text& name) const {
    const bool unread = unread_ && name == loaded_;
    if (!unread && labels_read_) return true;
    const StringId question = unread ? StringId::box_profile_replace : StringId::box_profile_labels;
    return boxes().show(format(load_string(question, boxes()), name),
                        load_string(StringId::box_warning, boxes()), BoxIcon::warning,
                        BoxButtons::yes_no_losing, true) == BoxAnswer::yes;
  }

  void erase(Dialog& dialog) {
    const Text name = name_in(dialog, kSoughtLength);
    if (name.empty()) return dialog.focus(kProfilesName);
    const WaitCursor waiting(context_.host.window);
    if (!deleteSettingsDatabase(context_.volume, Text(kProfilePrefix) + name)) return;
    if (auto names = read_names())
      names_ = std::move(*names);
    else
      std::erase(names_, name);
    show_names(dialog, 0);
    show_profile(dialog);
    const bool active = is_active(name);
    if (active) {
      context_.settings.activeprofilename = Text(kAllProfile);
      WriteTextSetting(context_.host.registry, u"activeprofilename", kAllProfile);
    }
    finish(active);
  }

  // The menu does not wait for the sheet's end, after which it might offer what is not there.
  void finish(bool active) const {
    context_.commands.rebuild_profile_menu();
    if (active) {
      load_active_profile(context_.volume, context_.settings);
      context_.commands.reload_view();
    }
    boxes().beep(Beep::hand);
  }

  bool is_active(TextView name) const {
    return cut(name, kProfileNameLength) == context_.settings.activeprofilename;
  }

  const OptionsContext& context_;
  std::vector<Text> names_;     // the combo's rows
  std::vector<Text> labels_;    // the list's
  bool labels_read_ = false;    // all of them
  Text loaded_;                 // the profile whose labels were selected
  std::vector<int> as_loaded_;  // which they are
  bool unread_ = false;         // they could not be read
  Text shown_name_;             // what stood in the combo last
  bool stepped_ = false;        // and was shown as it was stepped to
};

}  // namespace

std::unique_ptr<DialogProcedure> make_profiles_page(const OptionsContext& context) {
  return std::make_unique<ProfilesPage>(context);
}

}  // namespace orvello
