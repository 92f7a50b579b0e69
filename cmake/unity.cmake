# All presets but the daily one and the core's own compile up to eight files of a folder as one, which
# takes half the time.
# These name something, out of others' sight, as another file of their folder or a header does: they
# are compiled alone there. A "redefinition" in the sanitizers' builds only means one more line here.
set(alone
  app/list_pointer.cpp
  calendar/rule_text.cpp
  editor/rule_phrases_russian.cpp
  exchange/event_writer.cpp
  exchange/importer_messages.cpp
  exchange/recurrence_reader.cpp
  exchange/charset_windows.cpp
  exchange/zone_names.cpp
  hosts/linux/outbox.cpp
  hosts/shared/registry_text.cpp
  hosts/linux/single_instance.cpp
  hosts/linux/zone_files.cpp
  hosts/qt/bar_button.cpp
  hosts/qt/qt_main_window.cpp
  hosts/qt/qt_shell.cpp
  resources/editor_templates.cpp
  resources/icons_page_template.cpp
  resources/import_templates.cpp
  resources/recurrence_template.cpp
  resources/times_page_template.cpp
  settings/category_props.cpp
  settings/profiles.cpp
  store/embedded/calendar_restore.cpp
  store/embedded/embedded_records.cpp
  store/embedded/fresh_calendar.cpp
  store/embedded/salvage.cpp
  store/embedded/sqlite_volume.cpp
  store/notes_text.cpp
  tests/app/color_preview_test.cpp
  tests/app/list_pointer_test.cpp
  tests/calendar/rule_instances.cpp
  tests/calendar/zone_changes.cpp
  tests/calendar/zone_file.cpp
  tests/contract/editor_contract.cpp
  tests/contract/linux/editor_qt.cpp
  tests/contract/store_on_demand_test.cpp
  tests/qt/dialogs_test.cpp
  tests/qt/locale_names_test.cpp
  tests/store/pim/pim_contract.cpp
  tests/views/mirrored_month_test.cpp
  tests/views/month_paint_test.cpp
  tests/views/year_layout_test.cpp
  views/year_paint.cpp
)
list(TRANSFORM alone PREPEND ${CMAKE_SOURCE_DIR}/)
set_source_files_properties(${alone} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
