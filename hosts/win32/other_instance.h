// One window for a calendar: a later start finds the one that runs, by a window that nobody sees,
// and hands over what it was asked for.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>

#include "base/text.h"
#include "hosts/win32/native_window.h"

namespace orvello {

// What another launch hands over to this one.
struct InstanceCall {
  std::vector<Text> files;  // absolute paths
  bool new_appointment = false;
  friend bool operator==(const InstanceCall&, const InstanceCall&) = default;
};

class OtherInstance : public NativeWindow {
 public:
  // first: nobody else runs, and this one listens from now on. handed_over: the other has the call.
  // unanswered: the other is too busy, and knows nothing of it.
  enum class Joined { first, handed_over, unanswered };

  // `window_class` and `title` are the main window's; `identity` tells calendars apart.
  OtherInstance(TextView window_class, TextView title, TextView identity);
  ~OtherInstance() override;

  Joined join(InstanceCall call, int patience_milliseconds = 5000);
  // While another launch's message is answered: it waits, so this must not ask or show.
  std::function<void(InstanceCall)> called;

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  bool be_first();
  bool hand_over(HWND other, const Text& packed) const;

  Text class_, title_, lock_name_;
  HANDLE lock_ = nullptr;  // exists as long as the first one runs
};

// The call as one block of text units, and back; nothing of one that is not whole.
Text packed(const InstanceCall& call);
std::optional<InstanceCall> unpacked(TextView block);

}  // namespace orvello
