#include "hosts/win32/program/win32_host.h"

#include "files/system_files.h"
#include "hosts/shared/png_picture.h"
#include "hosts/shared/window_place.h"
#include "hosts/win32/input_panel.h"
#include "hosts/win32/program/loop_timers.h"
#include "hosts/win32/program/window_measure.h"
#include "hosts/win32/program/window_picture.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_boxes.h"
#include "hosts/win32/win32_clock.h"
#include "hosts/win32/win32_dialogs.h"
#include "hosts/win32/win32_files.h"
#include "hosts/win32/win32_locale.h"
#include "hosts/win32/win32_menu_bar.h"
#include "hosts/win32/win32_shell.h"
#include "hosts/win32/win32_surface.h"
#include "hosts/win32/win32_window.h"

namespace orvello {
namespace {

constexpr int kExitFailed = 1;

InstanceCall call_of(const WindowHostOptions& options) {
  InstanceCall call;
  for (const std::string& file : options.files) call.files.push_back(to_utf16(file));
  call.new_appointment = options.new_appointment;
  return call;
}

Win32WindowOptions window_options(const WindowHostOptions& options, bool right_to_left) {
  Win32WindowOptions result;
  result.screen = options.screen;
  result.dpi = options.dpi;
  result.right_to_left = right_to_left;
  result.call = call_of(options);
  if (options.offscreen) {
    result.fixed_look = true;  // a picture is the same on every desktop
    return result;
  }
  result.identity = to_utf16(options.paths.data);
  const std::string place = path_in(options.paths.config, "window");
  result.load_place = [place] { return load_window_place(place); };
  result.save_place = [place](const Rect& now) { save_window_place(place, now); };
  return result;
}

}  // namespace

struct Win32Host::Parts {
  Parts(const WindowHostOptions& options, Registry& r, RecordDatabases& d, CalendarStore& s)
      : offscreen(options.offscreen),
        clock(options.now),
        locale(Win32Locale::of_person(options.language)),
        files(options.paths),
        window(window_options(options, locale.data().right_to_left)),
        surfaces(window.fonts(), window.right_to_left()),
        menu_bar(window),

        boxes(window, locale.language()),
        dialogs(window, locale.data()),
        registry(r),
        databases(d),
        store(s) {}

  bool offscreen;
  Win32Clock clock;
  Win32Locale locale;
  Win32Files files;
  Win32InputPanel input;
  Win32Shell shell{from_wide(own_program())};
  LoopTimers timers;
  Win32Window window;
  Win32Surfaces surfaces;
  Win32MenuBar menu_bar;
  Win32Boxes boxes;
  Win32Dialogs dialogs;
  Registry& registry;
  RecordDatabases& databases;
  CalendarStore& store;
};

Win32Host::Win32Host(const WindowHostOptions& options, Registry& registry,
                     RecordDatabases& databases, CalendarStore& store, OwnProcesses& runs)
    : runs_(runs), parts_(std::make_unique<Parts>(options, registry, databases, store)) {
  runs_.set_loop(this);
  faults_.later = [this](std::function<void()> action) { parts_->window.later(std::move(action)); };
  faults_.log = [this](const std::string& sentence) {
    parts_->files.append_diagnostic_line(to_utf16(sentence));
  };
  faults_.tell = [this](const std::string& sentence, bool ends) {
    parts_->boxes.show(to_utf16(sentence), u"Error", BoxIcon::error, BoxButtons::ok, true);
    if (ends) parts_->window.post_quit(kExitFailed);
  };
  faults_.give_up = [] { PostQuitMessage(kExitFailed); };
  set_fault_handler([this](std::exception_ptr fault) {
    try {
      std::rethrow_exception(fault);
    } catch (...) {
      faults_.take_caught();
    }
  });
}

Win32Host::~Win32Host() {
  runs_.set_loop(nullptr);
  parts_.reset();  // windows that go may still have something to report
  set_fault_handler({});
}

Host Win32Host::host() {
  Parts& p = *parts_;
  return {p.clock,    p.locale, p.registry, p.files, p.databases, p.surfaces, p.window,
          p.menu_bar, p.boxes,  p.dialogs,  p.store, p.input,     p.shell};
}

int Win32Host::run() { return parts_->window.run(); }

bool Win32Host::call_answered() const { return parts_->window.call_answered(); }

void Win32Host::on_files(std::function<void(std::vector<std::string>)> callback) {
  const auto hand_over = [callback](const std::vector<Text>& files, bool new_appointment) {
    std::vector<std::string> named;
    for (const Text& file : files) named.push_back(to_utf8(file));
    if (new_appointment) named.emplace_back(kNewAppointmentCall);
    callback(std::move(named));
  };
  parts_->window.on_call = [hand_over](const InstanceCall& call) {
    hand_over(call.files, call.new_appointment);
  };
  parts_->window.on_files_dropped = [hand_over](const std::vector<Text>& files) {
    hand_over(files, false);
  };
}

void Win32Host::on_first_paint(std::function<void()> callback) {
  parts_->window.on_first_paint = std::move(callback);
}

std::vector<double> Win32Host::measure_turns(int count) {
  return orvello::measure_turns(parts_->window.frame(), parts_->window.loop(), count);
}

EditTimes Win32Host::measure_edits(int count) {
  return orvello::measure_edits(parts_->window.frame(), parts_->window.loop(), count);
}

std::string Win32Host::window_picture() {
  parts_->window.loop().deliver();
  const Image image = orvello::window_picture(parts_->window.frame());
  return image.empty() ? std::string() : png_picture(image);
}

std::unique_ptr<LoopTimer> Win32Host::once(int milliseconds, std::function<void()> action) {
  return parts_->timers.start(milliseconds, true, std::move(action));
}

std::unique_ptr<LoopTimer> Win32Host::every(int milliseconds, std::function<void()> action) {
  return parts_->timers.start(milliseconds, false, std::move(action));
}

void Win32Host::draw_meanwhile() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE)) {
    DispatchMessageW(&message);
    // A window that leaves something to paint would keep this busy.
    ValidateRect(message.hwnd, nullptr);
  }
}

}  // namespace orvello
