// What a screen reader is told of the view: a table of named cells. The view is asked only once
// somebody has listened, and what it said is kept until it tells that it has changed.
#pragma once

#include <map>
#include <vector>

#include "hosts/win32/accessible_object.h"
#include "ports/accessibility.h"

namespace orvello {

class Win32Window;

class ViewAccessible : public AccessibleSource {
 public:
  explicit ViewAccessible(Win32Window& owner) : owner_(owner) {}

  void set_view(AccessibleView* view);
  void changed();
  void tell_focus();  // the keyboard came to the view
  std::optional<LRESULT> answer(WPARAM wparam, LPARAM lparam);

  AccessiblePart accessible_self() override;
  int accessible_count() override { return static_cast<int>(cells().size()); }
  AccessiblePart accessible_part(int part) override;
  int accessible_focus() override;
  std::vector<int> accessible_selection() override;
  void press_accessible(int part) override;

 private:
  const std::vector<int>& cells();  // numbers of those that are told, none below a form or box
  const std::vector<Text>& items(int cell);
  int selected();
  bool has_keyboard() const;

  Win32Window& owner_;
  AccessibleView* view_ = nullptr;
  AccessibleWindow window_{*this};
  bool heard_ = false;  // somebody has listened
  bool known_ = false;
  AccessibleGrid grid_;
  std::vector<int> cells_;
  const std::vector<int> none_;
  std::map<int, std::vector<Text>> items_;
};

}  // namespace orvello
