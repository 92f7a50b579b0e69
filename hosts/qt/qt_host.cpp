#include "hosts/qt/qt_host.h"

#include <QApplication>
#include <QBuffer>
#include <QStyleFactory>

#include "hosts/linux/default_calendar.h"
#include "hosts/linux/desktop_input.h"
#include "hosts/linux/linux_files.h"
#include "hosts/linux/system_clock.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/edit_measure.h"
#include "hosts/qt/guarded_application.h"
#include "hosts/qt/loop_timer.h"
#include "hosts/qt/qt_dialogs.h"
#include "hosts/qt/qt_locale.h"
#include "hosts/qt/qt_main_window.h"
#include "hosts/qt/qt_menu_bar.h"
#include "hosts/qt/qt_message_boxes.h"
#include "hosts/qt/qt_surface.h"
#include "hosts/qt/start_fault.h"
#include "hosts/qt/turn_measure.h"

namespace orvello {
namespace {

constexpr int kExitFailed = 1;

QtWindowOptions window_options(const WindowHostOptions& options) {
  QtWindowOptions result;
  result.data_folder = options.paths.data;
  result.place_file = options.paths.config.empty() ? "" : options.paths.config + "/window";
  result.screen = options.screen;
  result.dpi = options.dpi;
  result.files = options.files;
  result.new_appointment = options.new_appointment;
  if (options.offscreen) {
    result.data_folder.clear();
    result.place_file.clear();
    result.look = DesktopLook{};  // a picture is the same on every desktop
  }
  return result;
}

}  // namespace

struct QtHost::Parts {
  Parts(const WindowHostOptions& options, Registry& r, RecordDatabases& d, CalendarStore& s)
      : clock(options.now),
        locale(QtLocale::of_environment(options.language)),
        files(options.paths),
        window(window_options(options)),
        menu_bar(window),
        boxes(window, locale.language()),
        dialogs(window, locale.data()),
        registry(r),
        databases(d),
        store(s) {}

  SystemClock clock;
  QtLocale locale;
  LinuxFiles files;
  DesktopInput input;
  DefaultCalendar shell{desktop_folders(), program_file()};
  QtSurfaces surfaces;
  QtMainWindow window;
  QtMenuBar menu_bar;
  QtMessageBoxes boxes;
  QtDialogs dialogs;
  Registry& registry;
  RecordDatabases& databases;
  CalendarStore& store;
};

std::unique_ptr<GuardedApplication> QtHost::make_application(int& argc, char** argv,
                                                             bool offscreen) {
  if (QCoreApplication::instance()) return nullptr;
  if (offscreen) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication::setDesktopSettingsAware(!offscreen);
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
  QCoreApplication::setApplicationName(QStringLiteral("orvello"));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Orvello"));
  QGuiApplication::setDesktopFileName(QStringLiteral("orvello"));
  qInstallMessageHandler(handle_toolkit_message);
  auto application = std::make_unique<GuardedApplication>(argc, argv);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  return application;
}

QtHost::QtHost(int& argc, char** argv, WindowHostOptions options, Registry& registry,
               RecordDatabases& databases, CalendarStore& store)
    : application_(make_application(argc, argv, options.offscreen)),
      parts_(std::make_unique<Parts>(options, registry, databases, store)) {
  set_right_to_left(parts_->locale.data().right_to_left);
  if (!application_) return;
  application_->log = [this](const std::string& sentence) {
    parts_->files.append_diagnostic_line(to_utf16(sentence));
  };
  application_->tell = [this](const std::string& sentence, bool ends) {
    parts_->boxes.show(to_utf16(sentence), u"Error", BoxIcon::error, BoxButtons::ok, true);
    if (ends) parts_->window.post_quit(kExitFailed);
  };
}

QtHost::~QtHost() = default;

Host QtHost::host() {
  Parts& p = *parts_;
  return {p.clock,    p.locale, p.registry, p.files, p.databases, p.surfaces, p.window,
          p.menu_bar, p.boxes,  p.dialogs,  p.store, p.input,     p.shell};
}

bool QtHost::guard(const std::function<void()>& action) {
  if (application_) return application_->guard(action);
  action();
  return true;
}

int QtHost::run() { return parts_->window.run(); }

bool QtHost::call_answered() const { return parts_->window.call_answered(); }

void QtHost::on_files(std::function<void(std::vector<std::string>)> callback) {
  parts_->window.on_files = std::move(callback);
}

void QtHost::on_first_paint(std::function<void()> callback) {
  parts_->window.on_first_paint = std::move(callback);
}

std::vector<double> QtHost::measure_turns(int count) {
  Shell* shell = parts_->window.shell();
  return shell ? orvello::measure_turns(*shell, count) : std::vector<double>();
}

EditTimes QtHost::measure_edits(int count) {
  Shell* shell = parts_->window.shell();
  return shell ? orvello::measure_edits(*shell, count) : EditTimes();
}

std::string QtHost::window_picture() {
  Shell* shell = parts_->window.shell();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  if (!shell || !shell->grab().toImage().save(&buffer, "PNG")) return {};
  return bytes.toStdString();
}

std::unique_ptr<LoopTimer> QtHost::once(int milliseconds, std::function<void()> action) {
  return std::make_unique<QtLoopTimer>(milliseconds, true, std::move(action));
}

std::unique_ptr<LoopTimer> QtHost::every(int milliseconds, std::function<void()> action) {
  return std::make_unique<QtLoopTimer>(milliseconds, false, std::move(action));
}

void QtHost::draw_meanwhile() {
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace orvello
