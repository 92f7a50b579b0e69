#include "hosts/win32/program/window_measure.h"

#include <chrono>

#undef TEXT  // the platform's: the texts have one of their own
#include "resources/editor_ids.h"
#include "resources/ids.h"

namespace orvello {
namespace {

constexpr double kLongestMilliseconds = 5000;
constexpr double kPauseMilliseconds = 50;  // of a person, in which what a press began comes about

class StopWatch {
 public:
  double milliseconds() const {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begun_)
        .count();
  }
  void restart() { begun_ = std::chrono::steady_clock::now(); }

 private:
  std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
};

struct WantedControl {
  int id;
  HWND found = nullptr;
};

// The visible control of that id, in whatever form stands.
HWND control_below(HWND frame, int id) {
  WantedControl wanted{id};
  EnumChildWindows(
      frame,
      [](HWND window, LPARAM parameter) -> BOOL {
        auto& sought = *reinterpret_cast<WantedControl*>(parameter);
        if (GetDlgCtrlID(window) != sought.id || !IsWindowVisible(window)) return TRUE;
        sought.found = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&wanted));
  return wanted.found;
}

bool is_in(HWND window, HWND control) { return window == control || IsChild(control, window); }

void send_key(HWND window, WPARAM key) {
  SendMessageW(window, WM_KEYDOWN, key, 1);
  SendMessageW(window, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void click(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  const LPARAM middle = MAKELPARAM(area.right / 2, area.bottom / 2);
  SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, middle);
  SendMessageW(window, WM_LBUTTONUP, 0, middle);
}

// Sees what the loop hands to windows. A paint counts once the loop asks for the next message.
class PaintWatch {
 public:
  PaintWatch(MessageLoop& loop, std::function<void(const MSG&)> painting)
      : loop_(loop), filter_(loop.add_filter([painting = std::move(painting)](MSG& message) {
          if (message.message == WM_PAINT) painting(message);
          return false;
        })) {}
  ~PaintWatch() { loop_.remove_filter(filter_); }
  PaintWatch(const PaintWatch&) = delete;
  PaintWatch& operator=(const PaintWatch&) = delete;

 private:
  MessageLoop& loop_;
  int filter_;
};

// Wakes a loop that waits for something that does not come.
class WakeTimer {
 public:
  explicit WakeTimer(HWND window) : window_(window) { SetTimer(window_, kId, 50, nothing); }
  ~WakeTimer() { KillTimer(window_, kId); }
  WakeTimer(const WakeTimer&) = delete;
  WakeTimer& operator=(const WakeTimer&) = delete;

 private:
  static constexpr UINT_PTR kId = 0x4D54;
  static void CALLBACK nothing(HWND, UINT, UINT_PTR, DWORD) {}
  HWND window_;
};

// Who fills in the form while the command that opened it waits for its end.
class MeasuringPerson {
 public:
  MeasuringPerson(HWND frame, MessageLoop& loop)
      : frame_(frame),
        watch_(loop, [this](const MSG& message) { painting(message); }),
        filter_(loop.add_filter([this](MSG&) { return act(), false; })),
        loop_(loop) {}
  ~MeasuringPerson() { loop_.remove_filter(filter_); }
  MeasuringPerson(const MeasuringPerson&) = delete;
  MeasuringPerson& operator=(const MeasuringPerson&) = delete;
  double opened = -1, saved = -1;

  void look() {
    if (saved < 0 && list_painting_) saved = timer_.milliseconds();
  }

 private:
  enum class Next { form, subject, letter, save, list };
  void painting(const MSG& message) {
    if (next_ == Next::form && is_in(message.hwnd, control_below(frame_, kLineSubject)))
      next_ = Next::subject;
    else if (next_ == Next::list && is_in(message.hwnd, control_below(frame_, kControlDayList)))
      list_painting_ = true;
  }
  // With the message after each: what it led to is over by then.
  void act() {
    const bool pausing = next_ != Next::subject && pause_.milliseconds() < kPauseMilliseconds;
    if (acting_ || pausing) return;
    acting_ = true;
    if (next_ == Next::subject && opened < 0) {
      opened = timer_.milliseconds();
      pause_.restart();
      click(control_below(frame_, kLineSubject));
      next_ = Next::letter;
    } else if (next_ == Next::letter) {
      if (const HWND focus = GetFocus()) SendMessageW(focus, WM_CHAR, L'M', 1);
      pause_.restart();
      next_ = Next::save;
    } else if (next_ == Next::save) {
      next_ = Next::list;
      timer_.restart();
      click(control_below(frame_, kEditorOk));
    }
    acting_ = false;
  }

  HWND frame_;
  StopWatch timer_, pause_;
  Next next_ = Next::form;
  bool list_painting_ = false, acting_ = false;
  PaintWatch watch_;
  int filter_;
  MessageLoop& loop_;
};

}  // namespace

std::vector<double> measure_turns(HWND frame, MessageLoop& loop, int count) {
  std::vector<double> times;
  for (int i = 0; i < count; ++i) {
    // Found anew each time: a turn may make another one.
    const HWND list = control_below(frame, kControlDayList);
    if (!list) return times;
    bool painted = false;
    const PaintWatch watch(loop, [&](const MSG& message) {
      painted = painted || is_in(message.hwnd, control_below(frame, kControlDayList));
    });
    const WakeTimer patience(frame);
    const StopWatch timer;
    send_key(list, VK_RIGHT);
    loop.run_until([&] { return painted || timer.milliseconds() > kLongestMilliseconds; });
    if (!painted) return times;
    times.push_back(timer.milliseconds());
    loop.deliver();  // what the turn left for later is no part of the next one
  }
  return times;
}

EditTimes measure_edits(HWND frame, MessageLoop& loop, int count) {
  EditTimes times;
  for (int i = 0; i < count; ++i) {
    const HWND list = control_below(frame, kControlDayList);
    if (!list) return times;
    const WakeTimer patience(frame);
    const StopWatch whole;
    MeasuringPerson person(frame, loop);
    send_key(list, VK_INSERT);
    loop.run_until([&] {
      person.look();
      return person.saved >= 0 || whole.milliseconds() > kLongestMilliseconds;
    });
    if (person.saved < 0) return times;
    times.opened.push_back(person.opened);
    times.saved.push_back(person.saved);
    loop.deliver();
  }
  return times;
}

}  // namespace orvello
