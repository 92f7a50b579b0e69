#include "hosts/headless/headless_host.h"
#include "tests/contract/scenarios.h"

namespace orvello {
namespace {

class HeadlessDevice : public ScenarioDevice {
 public:
  HeadlessDevice() { device_.files.present.insert(u"\\Program Files\\Orvello\\settings.vol"); }
  Host host() override { return device_.host(); }
  MemoryStore& store() override { return device_.store; }
  void press(Point point) override { device_.window.press(point); }
  void move(Point point) override { device_.window.drag(point); }
  void release(Point point) override { device_.window.release(point); }
  bool hold(Point point) override {
    const std::size_t opened = device_.dialogs.opened.size();
    press(point);
    device_.window.fire_timer(kTimerHold);
    release(point);
    return device_.dialogs.opened.size() > opened;
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
  void settle() override { device_.window.pump(); }

 private:
  HeadlessHost device_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, Scenarios, HeadlessDevice);

}  // namespace
}  // namespace orvello
