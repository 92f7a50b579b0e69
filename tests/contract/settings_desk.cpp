#include "ports/messages.h"
#include "resources/ids.h"
#include "settings/category_list.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {

using namespace std::chrono_literals;

SettingsDesk::SettingsDesk(std::unique_ptr<DialogsBench> person, bool russian)
    : bench(std::move(person)),
      locale(russian ? russian_locale() : english_locale(), russian ? u"ru" : u"en"),
      whole{device.clock,    locale,        device.registry, device.files, device.databases,
            device.surfaces, device.window, device.menu_bar, device.boxes, watched,
            device.store,    device.input,  device.shell},
      here{whole, session, settings, volume, screen, generation, history, commands} {
  device.files.present.insert(u"\\Program Files\\Orvello\\settings.vol");
  device.databases.create(kObjectStore, kCategoriesDatabase, 0);
  EXPECT_TRUE(session.Open(nullptr));
  load();
}

SettingsDesk::~SettingsDesk() {
  if (program) program->handle_message({kMessageClose, 0, {}, 0});
}

void SettingsDesk::load() {
  settings = {};
  LoadSettings(settings, device.registry, volume, device.clock, locale.data(), true);
  settings.locale = locale.data();
}

void SettingsDesk::start(ViewMode view) {
  session.Close();
  program = std::make_unique<Application>(whole, StartOptions{static_cast<int>(view), {}});
  ASSERT_EQ(program->start_up(), StartResult::running);
  settle();
}

void SettingsDesk::settle() {
  bench->settle();
  device.window.pump();
  EXPECT_TRUE(program->grid().worker().wait_until_idle(20s));
  device.window.pump();
}

int SettingsDesk::open(int page, std::function<void()> acts) {
  int acted = 0;
  bench->in_front([&] {
    ++acted;
    if (page != kPageDisplay) show_page(page);
    acts();
  });
  watched.result = kSheetFailed;
  if (program) {
    device.window.command(kCommandSettings);
    settle();
  } else {
    ShowSettingsSheet(here);
  }
  EXPECT_EQ(acted, 1) << "nobody met the sheet";
  return watched.result;
}

void SettingsDesk::type(int control, TextView text) {
  tap(control);
  dialog().focus(control, Caret::all);
  bench->type(text);
}

std::int32_t SettingsDesk::number(TextView name) const {
  const auto value = device.registry.get(RegistryRoot::classes_root, kSettingsKey, name);
  return value && !value->is_text ? static_cast<std::int32_t>(value->number) : -1;
}

std::optional<Text> SettingsDesk::stored_text(TextView name) const {
  const auto value = device.registry.get(RegistryRoot::classes_root, kSettingsKey, name);
  if (!value || !value->is_text) return std::nullopt;
  return value->text;
}

void SettingsDesk::store(TextView name, std::uint32_t number) {
  device.registry.put(RegistryRoot::classes_root, kSettingsKey, name, {false, number, {}});
}

void SettingsDesk::store(TextView name, TextView text) {
  device.registry.put(RegistryRoot::classes_root, kSettingsKey, name, {true, 0, Text(text)});
}

}  // namespace orvello::test
