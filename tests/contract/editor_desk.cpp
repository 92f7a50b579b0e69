#include "editor/editor_lines.h"
#include "ports/messages.h"
#include "resources/editor_ids.h"
#include "tests/contract/editor_contract.h"

namespace orvello::test {
EditorDesk::EditorDesk(std::unique_ptr<DialogsBench> person, bool russian)
    : bench(std::move(person)),
      locale(russian ? russian_locale() : english_locale(), russian ? u"ru" : u"en"),
      whole{device.clock,    locale,        device.registry, device.files, device.databases,
            device.surfaces, device.window, device.menu_bar, device.boxes, watched,
            device.store,    device.input,  device.shell},
      here{whole, session, settings, volume, screen, generation, history} {
  EXPECT_TRUE(session.Open(nullptr));
  settings.shown = settings.today = {11, 21, 2026};
  settings.locale = locale.data();
  device.clock.set({2026, 11, 6, 21, 10, 0, 0, 0});
  device.databases.on_volume_created = [this](TextView path) {
    device.files.present.emplace(path);
  };
}

void EditorDesk::meet(std::function<void()> acts) {
  bench->in_front([this, acts = std::move(acts)] {
    const std::size_t standing = watched.open.size();
    acts();
    if (watched.open.size() != standing || watched.opened.back() != kDialogEditor) return;
    for (int i = 0; i < 3 && watched.open.size() == standing; ++i) bench->press_close();
  });
}

void EditorDesk::tap(int control) {
  ++taps;
  bench->tap(control);
}

void EditorDesk::choose(int line, int row) {
  tap(line);
  ++taps;
  bench->choose_row(line_of(line)->edit, row);
}

void EditorDesk::type_into(int line, TextView text) {
  tap(line);
  bench->type(text);
}

AppointmentForm EditorDesk::stored(std::int32_t oid, CalendarDate occurrence) {
  AppointmentForm form;
  form.choice = {oid, occurrence,
                 occurrence == kNoDate ? EditScope::series : EditScope::occurrence};
  EXPECT_EQ(read_appointment(here.operation(), form), FormRead::read);
  return form;
}

}  // namespace orvello::test
