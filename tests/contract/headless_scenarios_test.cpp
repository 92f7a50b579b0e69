#include "hosts/headless/headless_host.h"
#include "tests/contract/mirrored_device.h"

namespace orvello {
namespace {

class HeadlessDevice : public ScenarioDevice {
 public:
  explicit HeadlessDevice(const LocaleData& locale = english_locale()) {
    device_.locale = HeadlessLocale(locale);
    answer(Answer::dismiss);
    device_.files.present.insert(u"\\Program Files\\Orvello\\settings.vol");
  }
  Host host() override { return device_.host(); }
  MemoryStore& store() override { return device_.store; }
  void press(Point point) override { device_.window.press(point); }
  void move(Point point) override { device_.window.drag(point); }
  void release(Point point) override { device_.window.release(point); }
  void hold(Point point) override {
    press(point);
    device_.window.fire_timer(kTimerHold);
    release(point);
  }
  void key(std::uint32_t key_code) override { device_.window.key(key_code); }
  void wheel(Point point, int notches) override { device_.window.wheel(point, notches); }
  void choose(std::uint32_t command) override { device_.window.command(command); }
  void turn(Size screen) override {
    ScreenInfo info = device_.window.screen();
    info.resolution = screen;
    info.work_area = {0, 0, screen.width, screen.height};
    device_.window.rotate(info);
  }
  void list_press(Point point) override { day().pen_down(kControlDayList, point); }
  void list_move(Point point) override { day().pen_move(kControlDayList, point); }
  void list_release(Point point) override { day().pen_up(kControlDayList, point); }
  void list_key(std::uint32_t key_code, bool control_held) override {
    day().key(kControlDayList, key_code, control_held);
  }
  void header_tap(Point point) override { day().tap(kControlDayHeader, point); }
  Point row_center(int row) override { return day().rows(kControlDayList).point_of(row); }
  void let_timer_fire(int id) override { day().fire_timer(id); }
  void meanwhile(std::function<void()> happens) override { happens_ = std::move(happens); }
  void key_anywhere(std::uint32_t key_code) override {
    HeadlessDialog& dialog = modal_ ? *modal_ : day();
    dialog.key(dialog.focused, key_code);
  }
  void answer(Answer answer) override {
    device_.dialogs.person = [this, answer](HeadlessDialog& dialog) {
      modal_ = &dialog;
      if (const auto happens = std::exchange(happens_, nullptr)) happens();
      modal_ = nullptr;
      if (answer == Answer::accept) dialog.press(kControlOk);
      if (answer == Answer::first_row)
        dialog.tap(kControlDayList, dialog.rows(kControlDayList).point_of(0));
    };
  }
  void pick(std::uint32_t command) override {
    day().menu_choice = [command](const std::vector<MenuItem>&) { return command; };
  }
  Text notice() override { return device_.window.notice ? device_.window.notice->text : Text(); }
  int boxes() override { return static_cast<int>(device_.boxes.shown.size()); }
  std::vector<int> opened() override { return device_.dialogs.opened; }
  void settle() override { device_.window.pump(); }

 private:
  HeadlessDialog& day() { return *device_.dialogs.modeless; }
  HeadlessHost device_;
  HeadlessDialog* modal_ = nullptr;
  std::function<void()> happens_;
};

using HeadlessDevices = testing::Types<HeadlessDevice, MirroredDevice<HeadlessDevice>>;
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, Scenarios, HeadlessDevices);

}  // namespace
}  // namespace orvello
