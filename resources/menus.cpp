#include "resources/menus.h"

namespace orvello {
namespace {

MenuBarButton image_button(std::uint32_t command, int image, Text hint) {
  MenuBarButton button;
  button.kind = MenuBarButton::Kind::image;
  button.command = command;
  button.image = image;
  button.hint = std::move(hint);
  return button;
}

}  // namespace

MenuBarContent main_menu_bar(Language language, Image strip, int height) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  using Kind = MenuBarButton::Kind;
  MenuBarContent bar;
  bar.strip = std::move(strip);
  bar.height = height;
  bar.buttons.push_back({Kind::text, kCommandNew, text(StringId::new_appointment), -1, {}, {}});
  bar.buttons.push_back(
      {Kind::menu, kCommandOptions, text(StringId::options), -1, options_menu(language, {}), {}});
  bar.buttons.push_back({Kind::text, kCommandExit, text(StringId::exit), -1, {}, {}});
  bar.buttons.push_back({Kind::separator, 0, {}, -1, {}, {}});
  bar.buttons.push_back(image_button(kCommandDayView, 0, text(StringId::day_view)));
  bar.buttons.push_back(image_button(kCommandMonthView, 1, text(StringId::month_view)));
  bar.buttons.push_back(image_button(kCommandYearView, 2, text(StringId::year_view)));
  MenuBarButton profiles = image_button(kCommandProfileMenu, 3, text(StringId::profiles));
  profiles.kind = Kind::image_menu;
  profiles.menu.push_back({kCommandFirstProfile, text(StringId::all_profiles), true, true});
  bar.buttons.push_back(std::move(profiles));
  return bar;
}

std::vector<MenuItem> options_menu(Language language, const OptionsMenuState& state) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  return {{kCommandSettings, text(StringId::settings), true, false},
          {kCommandSearch, text(StringId::search), true, false},
          {},
          {kCommandUndo, text(StringId::undo), state.can_undo, false},
          {kCommandRedo, text(StringId::redo), state.can_redo, false}};
}

std::vector<MenuItem> grid_menu(Language language, const GridMenuState& state) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  std::vector<MenuItem> items = {{kCommandCreate, text(StringId::create)}};
  if (state.has_source) items.push_back({kCommandPaste, text(StringId::paste)});
  if (state.open_day) items.push_back({kCommandOpenDay, text(StringId::open_day)});
  if (state.other_than_today) {
    items.emplace_back();
    items.push_back({kCommandToday, text(StringId::today)});
  }
  return items;
}

std::vector<MenuItem> day_menu(Language language, const DayMenuState& state) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  const MenuItem paste{kCommandPaste, text(StringId::paste), state.has_source, false};
  const MenuItem create{kCommandCreate, text(StringId::create), true, false};
  // What is about an appointment is nothing to read where there is none.
  if (!state.on_appointment)
    return state.has_source ? std::vector<MenuItem>{paste, create} : std::vector<MenuItem>{create};
  return {
      {kCommandCut, text(StringId::cut), true, false},
      {kCommandCopy, text(StringId::copy), true, false},
      paste,
      {kCommandMoveTo, text(StringId::move_to), true, false},
      {},
      {kCommandBeam, text(StringId::beam), true, false},
      {kCommandDelete, text(StringId::erase), true, false},
      {},
      {kCommandEditAppointment, text(StringId::edit), true, false},
      create,
  };
}

}  // namespace orvello
