// The ports' contracts on the host without a screen.
#include "calendar/posix_zone.h"
#include "hosts/headless/headless_host.h"
#include "tests/contract/canvas_contract.h"
#include "tests/contract/clock_contract.h"
#include "tests/contract/device_shell_contract.h"
#include "tests/contract/files_contract.h"
#include "tests/contract/input_methods_contract.h"
#include "tests/contract/locale_contract.h"
#include "tests/contract/main_window_contract.h"
#include "tests/contract/menu_bar_contract.h"
#include "tests/contract/message_boxes_contract.h"
#include "tests/contract/record_databases_contract.h"
#include "tests/contract/registry_contract.h"

namespace orvello {
namespace {

template <typename Case, typename Made>
auto only(const char* name) {
  return ::testing::Values(Case{name, [] { return std::make_unique<Made>(); }});
}

struct MemoryRegistryPlace : RegistryPlace {
  Registry& open() override { return registry; }
  void close_all() override {}
  MemoryRegistry registry;
};
INSTANTIATE_TEST_SUITE_P(Headless, RegistryContract,
                         (only<RegistryCase, MemoryRegistryPlace>("memory")));

struct MemoryDatabasesPlace : DatabasesPlace {
  RecordDatabases& open() override { return databases; }
  void fail_reads_after(int count) override { databases.fail_read_after = count; }
  MemoryRecordDatabases databases;
};
INSTANTIATE_TEST_SUITE_P(Headless, RecordDatabasesContract,
                         (only<DatabasesCase, MemoryDatabasesPlace>("memory")));

struct HeadlessWindowDevice : WindowDevice {
  MainWindow& window() override { return port; }
  void deliver() override {
    port.pump();
    if (std::exchange(painted, port.invalidations()) != port.invalidations()) port.paint();
  }
  void press(Point point) override { port.press(point); }
  void drag(Point point) override { port.drag(point); }
  void release(Point point) override { port.release(point); }
  void hover(Point point) override { port.hover(point); }
  void key(std::uint32_t code, int held) override { port.key(code, held); }
  void press_other_button(Point point) override { port.press_other_button(point); }
  void wheel(Point point, int notches, bool sideways) override {
    port.wheel(point, notches, sideways);
  }
  void choose_in_menu(std::uint32_t command) override {
    port.menu_choice = [command](const std::vector<MenuItem>&) { return command; };
  }
  void close() override { port.close(); }
  void turn(Size screen) override {
    ScreenInfo info = port.screen();
    info.resolution = screen;
    info.work_area = {0, 0, screen.width, screen.height};
    port.rotate(info);
  }
  void let_timer_fire(int id) override { port.fire_timer(id); }
  bool waits() override { return port.wait_cursors() > 0; }
  static std::optional<Text> text_of(const std::optional<HoverLabel>& label) {
    return label ? std::optional(label->text) : std::nullopt;
  }
  std::optional<Text> label() override { return text_of(port.label); }
  std::optional<Text> notice() override { return text_of(port.notice); }
  HeadlessWindow port;
  int painted = 0;
};
INSTANTIATE_TEST_SUITE_P(Headless, MainWindowContract,
                         (only<WindowCase, HeadlessWindowDevice>("headless")));

struct HeadlessBarDevice : MenuBarDevice {
  HeadlessBarDevice() { window.create(u"Orvello", u"Orvello", 320, log); }
  MenuBar& bar() override { return port; }
  Recorder& recorder() override { return log; }
  void deliver() override { window.pump(); }
  void tap(std::uint32_t command) override { port.tap(command); }
  std::vector<Text> choose(std::uint32_t menu, std::uint32_t item) override {
    port.choose(menu, item);
    std::vector<Text> texts;
    for (const MenuItem& one : port.menu(menu)) texts.push_back(one.text);
    return texts;
  }
  Text text(std::uint32_t command) override {
    for (const MenuBarButton& button : port.content().buttons)
      if (button.command == command) return button.text;
    return {};
  }
  bool checked(std::uint32_t command) override { return port.checked(command); }
  Text highlight(std::uint32_t command) override { return port.highlight(command); }
  Recorder log;
  HeadlessWindow window;
  HeadlessMenuBar port{window};
};
INSTANTIATE_TEST_SUITE_P(Headless, MenuBarContract,
                         (only<MenuBarCase, HeadlessBarDevice>("headless")));

struct HeadlessBoxDevice : BoxDevice {
  MessageBoxes& boxes() override { return port; }
  void make_window() override {}
  void person(std::optional<int> button) override { port.button = button.value_or(-1); }
  void press_return() override { port.button = HeadlessBoxes::kReturn; }
  HeadlessBoxes port;
};
INSTANTIATE_TEST_SUITE_P(Headless, MessageBoxesContract,
                         (only<BoxCase, HeadlessBoxDevice>("headless")));

std::unique_ptr<Clock> standing_clock(const char* zone, LocalSeconds local) {
  SystemTime now;
  VariantTimeToSystemTime(to_calendar_date(local), now);
  auto clock = std::make_unique<HeadlessClock>(now);
  clock->set_zone(zone);
  return clock;
}
INSTANTIATE_TEST_SUITE_P(Headless, ClockContract,
                         ::testing::Values(ClockCase{"headless", standing_clock}));

struct HeadlessSurfaceDevice : SurfaceDevice {
  Surfaces& surfaces() override { return port; }
  std::vector<Color> shown(Surface&) override { return {}; }
  HeadlessSurfaces port;
};
INSTANTIATE_TEST_SUITE_P(Headless, SurfacesContract,
                         (only<SurfaceCase, HeadlessSurfaceDevice>("headless")));
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CanvasContract);

struct MemoryFilesDevice : FilesDevice {
  Files& files() override { return port; }
  void put(TextView path) override { port.present.emplace(path); }
  void put_bitmap(TextView path, const Image& image) override { port.bitmaps[Text(path)] = image; }
  std::vector<Text> diagnostic_lines() override { return port.diagnostics; }
  void fail_appending() override { port.disk_full = true; }
  MemoryFiles port;
};
INSTANTIATE_TEST_SUITE_P(Headless, FilesContract, (only<FilesCase, MemoryFilesDevice>("memory")));

INSTANTIATE_TEST_SUITE_P(
    Headless, LocaleContract,
    ::testing::Values(LocaleCase{"english", [] { return std::make_unique<HeadlessLocale>(); }},
                      LocaleCase{"russian", [] {
                                   return std::make_unique<HeadlessLocale>(russian_locale(), u"ru");
                                 }}));
INSTANTIATE_TEST_SUITE_P(Headless, InputMethodsContract,
                         (only<InputCase, HeadlessInput>("headless")));

struct HeadlessShellDevice : ShellDevice {
  DeviceShell& shell() override { return port; }
  void choose(const std::string& program) override { port.starts = program; }
  std::string chosen() override { return port.starts; }
  void fail_reading() override { port.unreadable = true; }
  HeadlessShell port;
};
INSTANTIATE_TEST_SUITE_P(Headless, DeviceShellContract,
                         (only<ShellCase, HeadlessShellDevice>("headless")));

}  // namespace
}  // namespace orvello
