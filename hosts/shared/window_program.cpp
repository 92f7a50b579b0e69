#include "hosts/shared/window_program.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

#include "app/application.h"
#include "app/own_messages.h"
#include "cli/commands.h"
#include "cli/import_preview.h"
#include "cli/imported_labels.h"
#include "cli/meeting_sender.h"
#include "exchange/export.h"
#include "files/calendar_files.h"
#include "files/replace_file.h"
#include "files/system_files.h"
#include "hosts/shared/backup_keeper.h"
#include "hosts/shared/device_databases.h"
#include "hosts/shared/meeting_delivery.h"
#include "hosts/shared/own_files.h"
#include "hosts/shared/written_boxes.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "settings/registry_access.h"
#include "store/unavailable_store.h"

namespace orvello {
namespace {

constexpr int kPollMilliseconds = 1500;  // for what another process changed
constexpr std::chrono::seconds kDrawLimit{30};
constexpr int kFirstBackupMilliseconds = 20000;  // when the start is long over
constexpr int kNextBackupMilliseconds = 3600 * 1000;
constexpr std::size_t kNamedFiles = 5;               // of those that were not opened
constexpr int kTurns = 50, kRestMilliseconds = 200;  // after the start, before the first turn

// Everything that a window stands on, in the order in which it must go away again.
struct Session {
  Session(ProgramSystem& with, const WindowParts& parts, bool unattended)
      : system(with),
        registry(system.registry(parts.paths)),
        volumes(system.databases(path_in(parts.paths.data, "device.db"))),
        databases(*volumes, parts.store),
        unavailable(parts.reason),
        store(parts.store ? static_cast<CalendarStore&>(*parts.store) : unavailable),
        window(
            system.window(host_options(parts, parts.line.command == CommandLine::Command::render),
                          *registry, system.is_device() ? *volumes : databases, store)),
        host(window->host()),
        application(attended_host(unattended), start_options(parts)) {}

  Host attended_host(bool unattended) {
    MessageBoxes& boxes = unattended ? static_cast<MessageBoxes&>(written) : host.boxes;
    return {host.clock,    host.locale, host.registry, host.files, host.databases,
            host.surfaces, host.window, host.menu_bar, boxes,      host.dialogs,
            host.store,    host.input,  host.shell};
  }

  static StartOptions start_options(const WindowParts& parts) {
    StartOptions options;
    using Measure = CommandLine::Measure;
    const bool in_day = parts.line.measure == Measure::turn || parts.line.measure == Measure::edit;
    options.view = in_day ? 0 : parts.line.view;
    if (parts.line.date) options.date = *parts.line.date;
    return options;
  }

  ProgramSystem& system;
  std::unique_ptr<StoredRegistry> registry;
  std::unique_ptr<RecordDatabases> volumes;
  DeviceDatabases databases;  // a device's own programs do its work
  UnavailableStore unavailable;
  CalendarStore& store;
  WrittenBoxes written;
  std::unique_ptr<WindowHost> window;
  Host host;
  Application application;
  std::unique_ptr<LoopTimer> poll, wake, rest;
};

// The view that stands goes to what came.
void show_imported(Session& session, const ImportOutcome& outcome) {
  if (outcome.first_day) session.application.set_current_date(triple_of(*outcome.first_day));
  session.host.window.post({kMessageRefresh, 0, {}, 0});
}

void import_files_here(Session& session, RecordCalendarStore* store, const Paths& paths,
                       const std::vector<std::string>& named) {
  if (named.empty() || !store) return;
  Application& application = session.application;
  const Host& host = application.host();
  const auto refuse = [&host](const Text& reason) {
    host.boxes.show(reason, load_string(StringId::box_error, host.boxes), BoxIcon::error,
                    BoxButtons::ok, true);
  };
  if (const auto own = own_file_among(paths, named); !own.empty())
    return refuse(format(load_string(StringId::box_own_file, host.boxes), to_utf16(own)));
  const auto files = calendar_files(named);
  if (!files) return refuse(to_utf16(files.reason()));
  const SettingsRecord& settings = application.settings();
  const ImportDesk desk{*store,
                        application.history(),
                        host.clock,
                        host.dialogs,
                        host.boxes,
                        language_of(session.host.locale),
                        settings.locale,
                        settings.timeformat != 0,
                        application.state().form_layout,
                        application.measuring_canvas()};
  const ImportedLabels labels(*store);
  const ImportOutcome outcome = import_after_preview(*files, desk);
  if (outcome.imported) application.color_labels(labels.fresh());
  if (outcome.begun) show_imported(session, outcome);
  if (outcome.imported) tell_import(outcome.counts, desk);
}

// How appointments leave: beamed ones as a calendar file, of which is told where it went when
// nothing else shows it, and meetings as requests.
void open_outbox(Session& session, RecordCalendarStore& store, const WindowParts& parts) {
  const std::shared_ptr<const Departures> outbox = session.system.departures(
      parts.line.data_folder.empty() ? "" : path_in(parts.paths.data, "outbox"));
  using Sending = RecordCalendarStore::Sending;
  const auto beam = [&session, &store, &parts, outbox](const AppointmentRecord& record) -> Sending {
    const auto text = export_appointments(store, {record}, parts.clock);
    if (!text) return {text.reason()};
    const auto handed = outbox->hand_over(record.fields.subject, *text);
    if (handed && !handed->mailed)
      session.application.host().boxes.show(
          format(load_string(StringId::box_saved_to, session.host.boxes), to_utf16(handed->path)),
          u"Orvello");
    return {handed.reason()};
  };
  const auto send = [&session, &store, &parts, outbox](const AppointmentRecord& record) {
    const Host& host = session.application.host();
    // Nothing that a person does comes in meanwhile, but the window is drawn.
    const auto draw = [&session] { session.window->draw_meanwhile(); };
    const MeetingDelivery ways{*outbox, host.registry, host.boxes, parts.clock, draw};
    return send_meeting({store, parts.clock, host.registry, host.dialogs, host.boxes,
                         language_of(host.locale), [&outbox] { return outbox->identity(); },
                         [&ways](const auto&... said) { return ways.deliver(said...); }},
                        record);
  };
  store.set_transport(send, beam);
}

int tell_unanswered(Session& session, const std::vector<std::string>& files) {
  std::string sentence = "Another Orvello has this calendar's window open, but it does not answer.";
  if (!files.empty())
    sentence += files.size() > 1 ? " The files were not opened." : " The file was not opened.";
  for (std::size_t i = 0; i < files.size() && i < kNamedFiles; ++i) sentence += "\n" + files[i];
  if (files.size() > kNamedFiles) sentence += "\n...";
  session.system.tell_start_fault(session.host.boxes, sentence);
  return kExitFailure;
}

// False when it was not done as often as it should have been.
bool print_times(const char* what, std::vector<double> times) {
  const bool all = static_cast<int>(times.size()) == kTurns;
  if (all) {
    std::sort(times.begin(), times.end());
    char line[100];
    std::snprintf(line, sizeof line, "%s: median %.1f ms, maximum %.1f ms", what,
                  times[times.size() / 2], times.back());
    std::cout << line << std::endl;
  } else {
    std::cerr << "orvello: " << what << " was done " << times.size() << " of " << kTurns
              << " times\n";
  }
  return all;
}

// Ends the program with what it has measured.
bool print_measure(Session& session, CommandLine::Measure measure) {
  bool all = false;
  if (measure == CommandLine::Measure::turn) {
    all = print_times("turn", session.window->measure_turns(kTurns));
  } else {
    const EditTimes times = session.window->measure_edits(kTurns);
    all = print_times("open", times.opened);
    all = print_times("save", times.saved) && all;
  }
  session.host.window.post({kMessageClose, 0, {}, 0});
  return all;
}

void import_later(Session& session, const WindowParts& parts, std::vector<std::string> files) {
  session.application.when_free([&session, &parts, files = std::move(files)] {
    import_files_here(session, parts.store, parts.paths, files);
  });
}

void write_later(Session& session) {
  session.host.window.post({kMessageCommand, kCommandNew, {}, 0});
}

// What other starts ask for while this window is open.
void take_calls(Session& session, const WindowParts& parts) {
  session.window->on_files([&session, &parts](std::vector<std::string> files) {
    const bool wanted = std::erase(files, kNewAppointmentCall) > 0;
    import_later(session, parts, std::move(files));
    if (wanted) write_later(session);
  });
}

void measure_after_first_paint(Session& session, CommandLine::Measure measure, bool& measured) {
  using Measure = CommandLine::Measure;
  if (measure == Measure::start) {
    session.window->on_first_paint([&session] {
      std::cout << "first paint: " << session.system.milliseconds_since_start() << " ms"
                << std::endl;
      session.host.window.post({kMessageClose, 0, {}, 0});
    });
  } else if (measure != Measure::nothing) {
    session.window->on_first_paint([&session, measure, &measured] {
      session.rest = session.window->once(kRestMilliseconds, [&session, measure, &measured] {
        measured = print_measure(session, measure);
      });
    });
  }
}

// What other processes change in the calendar and in the settings is seen here in a moment.
void watch_others(Session& session, RecordCalendarStore& store) {
  session.poll = session.window->every(kPollMilliseconds, [&session, &store] {
    store.poll();
    if (session.registry->changed_outside())
      session.application.when_free([&session] { session.application.load_settings_again(); });
  });
  store.set_wake(
      [&session, &store] { session.wake = session.window->once(0, [&store] { store.poll(); }); });
}

}  // namespace

std::optional<LocalSeconds> fixed_time(const CommandLine& line) {
  if (!line.now) return std::nullopt;
  CalendarDate date = 0;
  SystemTimeToVariantTime(*line.now, date);
  return to_seconds(date);
}

WindowHostOptions host_options(const WindowParts& parts, bool offscreen) {
  WindowHostOptions options;
  options.paths = parts.paths;
  options.now = fixed_time(parts.line);
  options.language = parts.line.language;
  options.screen = parts.line.screen;
  options.dpi = parts.line.dpi;
  if (!offscreen) options.files = parts.line.files;
  options.new_appointment = parts.line.new_appointment;
  options.offscreen = offscreen;
  if (offscreen && !options.screen) options.screen = Size{480, 640};
  if (offscreen && options.dpi == 0) options.dpi = parts.line.screen ? 96 : 192;
  return options;
}

int run_window(ProgramSystem& system, const WindowParts& parts) {
  const CommandLine::Measure measure = parts.line.measure;
  const bool watched = measure == CommandLine::Measure::nothing;
  Session session(system, parts, !watched);
  RecordCalendarStore* store = parts.store;
  take_calls(session, parts);
  bool measured = true;
  measure_after_first_paint(session, measure, measured);
  if (parts.file) parts.file->limit_wait(kLockWait);
  EnsureShellCalendarKey(session.host.registry);
  StartResult started = StartResult::no_window;
  if (!session.window->guard([&] { started = session.application.start_up(); }))
    return kExitFailure;
  if (started == StartResult::other_instance && !session.window->call_answered())
    return tell_unanswered(session, parts.line.files);
  if (started != StartResult::running) return kExitNoWindow;
  if (parts.file) open_outbox(session, *store, parts);  // a device has ways of its own
  if (store) watch_others(session, *store);
  if (!parts.line.files.empty())
    import_later(session, parts, parts.line.files);
  else if (watched && !parts.line.new_appointment)
    session.application.when_free([&session] { session.application.greet(); });
  if (watched) session.application.when_free([&session] { session.application.offer_draft(); });
  if (watched && parts.line.new_appointment) write_later(session);
  BackupKeeper backups(parts, *session.window, system, [&session](const std::string& reason) {
    session.application.when_free([&session, reason] {
      session.host.boxes.show(to_utf16(reason), u"Error", BoxIcon::error, BoxButtons::ok, true);
    });
  });
  if (parts.file && watched) backups.begin(kFirstBackupMilliseconds, kNextBackupMilliseconds);
  const int code = session.window->run();
  if (store) {
    store->set_wake({});
    store->set_transport({}, {});
  }
  const bool read =
      measure != CommandLine::Measure::start || !session.application.trouble().standing();
  return measured && read ? code : kExitFailure;
}

int run_render(ProgramSystem& system, const WindowParts& given) {
  WindowParts parts = given;
  parts.line.command = CommandLine::Command::render;
  Session session(system, parts, true);
  if (session.application.start_up() != StartResult::running) {
    std::cerr << "orvello: no window could be made to draw in\n";
    return kExitFailure;
  }
  session.application.grid().draw_requested();
  const bool drawn = session.application.grid().worker().wait_until_idle(kDrawLimit);
  session.application.grid().worker().rethrow_failure();
  // A picture of a part would show the rest as free.
  if (const ReadTrouble& trouble = session.application.trouble(); trouble.standing()) {
    std::cerr << "orvello: " << to_utf8(trouble.reason()) << "\n";
    return kExitFailure;
  }
  const std::string picture = drawn ? session.window->window_picture() : "";
  // A picture with gaps looks like a calendar with room.
  if (const auto fault = parts.file ? parts.file->any_failure() : ""; !fault.empty()) {
    std::cerr << "orvello: " << fault << "\n";
    return kExitFailure;
  }
  if (picture.empty()) {
    std::cerr << "orvello: the picture could not be drawn\n";
    return kExitFailure;
  }
  if (const auto written = replace_file(parts.line.files[0], picture); !written) {
    std::cerr << "orvello: " << written.reason() << "\n";
    return kExitFailure;
  }
  session.application.handle_message({kMessageClose, 0, {}, 0});
  return kExitSuccess;
}

}  // namespace orvello
