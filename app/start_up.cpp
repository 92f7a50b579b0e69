// From nothing to a window with a view, and back.

#include "app/application.h"
#include "app/greeting.h"
#include "app/own_messages.h"
#include "resources/bitmaps.h"
#include "resources/dialog_templates.h"
#include "resources/ids.h"
#include "resources/menus.h"
#include "settings/category_props.h"
#include "settings/load_settings.h"
#include "settings/profiles.h"
#include "settings/registry_access.h"

namespace orvello {
namespace {

constexpr TextView kWindowClass = u"Orvello";
constexpr TextView kWindowTitle = u"Orvello";
constexpr TextView kInkLibraries[] = {u"richink.dll", u"inkx.dll"};

}  // namespace

StartResult Application::start_up() {
  const Modality::Standing starting(modality_);  // what comes meanwhile waits
  measure_screen();
  if (host_.window.activate_other_instance(kWindowClass, kWindowTitle))
    return StartResult::other_instance;
  if (!host_.window.create(kWindowClass, kWindowTitle, state_.layout.work.height, *this))
    return StartResult::no_window;
  load_ink_libraries();
  EnsureSettingsKey(host_.registry);
  LoadSettings(settings_, host_.registry, volume_, host_.clock, host_.locale.data(),
               low_resolution(), host_.window.screen().dark_desktop);
  host_.window.show_wait_cursor();
  lay_out();
  today_button_ = load_bitmap(low_resolution() ? kBitmapTodayLow : kBitmapTodayHigh);
  open_store();
  if (host_.menu_bar.exists()) host_.window.move(place_);
  grid_.fit();
  measuring_ = host_.surfaces.create({1, 1});
  host_.window.show();
  load_conventions();
  state_.today = settings_.today;
  state_.current = options_.date.year != 0 ? options_.date : settings_.shown;
  started_ = true;
  state_.view_mode = ViewMode::none_yet;
  host_.window.hide_wait_cursor();
  enter_view(options_.view >= 0 ? options_.view : settings_.startmode);
  host_.window.start_timer(kTimerDayChange, kDayChangeMilliseconds);
  profiles_.rebuild();
  volume_boxes_.started();
  return StartResult::running;
}

void Application::load_settings_again() {
  const MonthDayYear today = settings_.today, shown = settings_.shown;
  LoadSettings(settings_, host_.registry, volume_, host_.clock, host_.locale.data(),
               low_resolution());
  settings_.today = today;
  settings_.shown = shown;
  load_conventions();
  profiles_.rebuild();
  if (state_.view_mode == ViewMode::day)
    reopen_day_view();
  else
    reload_view();
}

void Application::greet() {
  std::int32_t due = 0;
  ReadNumberSetting(host_.registry, kGreetingDue, due);
  if (due == 0) return;
  GreetingProcedure procedure(language(), state_.form_layout, host_.dialogs);
  host_.dialogs.run_modal(greeting_dialog(language()), procedure);
  WriteNumberSetting(host_.registry, kGreetingDue, 0);
  FlushSettings(host_.registry);
}

bool Application::on_create(const Message&) {
  create_menu_bar();
  grid_.start();
  return true;
}

// The menu bar's own height is known before it exists, so that sizes do not jump while it comes
// and goes with the window's activation.
void Application::measure_screen() {
  const ScreenInfo screen = host_.window.screen();
  state_.landscape = screen.resolution.width > screen.resolution.height;
  state_.platform_generation = platform_generation(screen.os_major, screen.os_minor);
  state_.dpi_x = screen.dpi_x;
  state_.dpi_y = screen.dpi_y;
  place_ = window_place(screen);
  lay_out();
}

Rect Application::window_place(const ScreenInfo& screen) const {
  const int bar = menu_bar_height(screen.form_dpi > 0 ? screen.form_dpi : screen.dpi_y);
  const Size work = work_size(screen.work_area, bar, screen.dpi_x);
  return {screen.work_area.x, screen.work_area.y, work.width, work.height};
}

void Application::lay_out() {
  state_.layout = layout_screen({place_.width, place_.height}, state_.dpi_x, state_.dpi_y,
                                settings_.cleartype == 1);
  state_.form_layout = form_layout(state_.layout, host_.window.screen().form_dpi);
}

bool Application::low_resolution() const { return state_.dpi_x < kHighResolutionDpi; }

void Application::create_menu_bar() {
  Image strip = load_bitmap(low_resolution() ? kBitmapMenuBarLow : kBitmapMenuBarHigh);
  const MenuBarContent content =
      main_menu_bar(language(), std::move(strip), menu_bar_height(state_.form_layout.dpi_y));
  if (!host_.menu_bar.create(content)) return;
  // An image button keeps this text unseen.
  host_.menu_bar.set_button_text(6, u"New Appt");
  show_options_menu();
  if (started_) {
    profiles_.rebuild();
    show_checked_view();
  }
}

void Application::load_ink_libraries() {
  for (int i = 0; i < 2; ++i) {
    ink_loaded_[i] = host_.input.load_library(kInkLibraries[i]);
    if (!ink_loaded_[i])
      host_.boxes.show(format(u"Unable to load %s", kInkLibraries[i]), u"Error", BoxIcon::warning);
  }
}

void Application::open_store() {
  if (state_.platform_generation == 3 && !session_.OpenNotify(this))
    host_.boxes.show(u"Could not initialize POOM for WM5 OS", u"Error");
  session_.Open(this);  // a failure was shown; the views stay empty
}

void Application::load_conventions() {
  load_locale_conventions(settings_, host_.locale.data());
  loadCategoryProps(volume_, settings_.category_props);
  load_active_profile(volume_, settings_);
}

bool Application::on_destroy(const Message&) {
  modality_.forget_all();
  host_.window.stop_timer(kTimerDayChange);
  day_view_.close();
  grid_.stop();
  session_.Close();
  if (state_.platform_generation == 3) session_.CloseNotify();
  for (int i = 0; i < 2; ++i)
    if (ink_loaded_[i]) host_.input.free_library(kInkLibraries[i]);
  host_.menu_bar.destroy();
  host_.window.post_quit(0);
  return true;
}

}  // namespace orvello
