#include "hosts/qt/qt_main_window.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QSocketNotifier>
#include <QToolTip>
#include <filesystem>
#include <mutex>
#include <utility>
#include <vector>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/desktop_settings.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/program_icon.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_surface.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/touch_menu.h"
#include "hosts/shared/window_place.h"
#include "ports/messages.h"

namespace orvello {
namespace {

constexpr int kFirstWidth = 480, kFirstHeight = 640;  // logical pixels
constexpr int kLeastWidth = 240, kLeastHeight = 240;  // design units

constexpr int kFrameMilliseconds = 150;  // a window manager puts a frame on within these

constexpr const char* kQuitPosted = "quitPosted";

// A quit that came while the main loop did not run would end every later loop of the process at
// once, also those of another window. Only a run of the main loop takes it back.
void forget_last_quit() {
  QCoreApplication* application = QCoreApplication::instance();
  if (!application->property(kQuitPosted).toBool()) return;
  application->setProperty(kQuitPosted, false);
  after(0, application, [application] { application->quit(); });
  QApplication::exec();
}

// What the screens have room for beside panels, logical pixels.
std::vector<Rect> screen_rooms() {
  std::vector<Rect> rooms;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect room = screen->availableGeometry();
    rooms.push_back({room.x(), room.y(), room.width(), room.height()});
  }
  return rooms;
}

Rect from_qt(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

}  // namespace

// The way in from other threads. They only touch the queue and the descriptor here, none of the
// toolkit: its own queue would do, but a thread sanitizer cannot see into it.
class QtMainWindow::Receiver : public Guarded<QObject> {
 public:
  explicit Receiver(QtMainWindow& window)
      : window_(window),
        wake_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
        notifier_(wake_, QSocketNotifier::Read) {
    on_signal(&notifier_, &QSocketNotifier::activated, this, [this] { take(); });
  }
  ~Receiver() override {
    notifier_.setEnabled(false);
    ::close(wake_);
  }

  void post(const Message& message) {
    {
      std::lock_guard lock(lock_);
      posted_.push_back(message);
    }
    wake();
  }
  void invalidate() {
    if (!invalidated_.exchange(true)) wake();
  }

 private:
  void wake() {
    const std::uint64_t one = 1;
    // It can only fail when the counter is full, and then a wake-up is on its way already.
    [[maybe_unused]] const auto written = ::write(wake_, &one, sizeof one);
  }
  std::optional<Message> next(bool& more) {
    std::lock_guard lock(lock_);
    if (posted_.empty()) return std::nullopt;
    const Message message = posted_.front();
    posted_.pop_front();
    more = !posted_.empty();
    return message;
  }
  void take() {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto got = ::read(wake_, &count, sizeof count);
    if (invalidated_.exchange(false) && window_.shell_) window_.shell_->content().update();
    bool more = false;
    const auto message = next(more);
    // A message may run a loop of its own, in which the others must arrive too.
    if (more) wake();
    if (message) window_.send(*message);
  }

  QtMainWindow& window_;
  int wake_;
  QSocketNotifier notifier_;
  std::mutex lock_;
  std::deque<Message> posted_;
  std::atomic<bool> invalidated_{false};
};

QtMainWindow::QtMainWindow(QtWindowOptions options)
    : options_(std::move(options)), receiver_(std::make_unique<Receiver>(*this)) {
  forget_last_quit();
  const QScreen* screen = QGuiApplication::primaryScreen();
  density_.ratio = screen ? screen->devicePixelRatio() : 1;
  density_.dpi = options_.dpi > 0 ? options_.dpi : density_.device(96);
  if (!options_.look) desktop_settings_ = ask_desktop_settings();
  look_ = options_.look ? *options_.look : look_of_desktop(desktop_settings_);
  place_ = first_place();
  take_scale();
  take_colors();
  events_.send = [this](const Message& message) { return send(message); };
  events_.close_wanted = [this] { close_wanted(); };
  events_.resized = [this] { resized(); };
  events_.desktop_changed = [this] { follow_desktop(); };
  events_.activated = [this] { ask_desktop(); };
  events_.files_dropped = [this](std::vector<std::string> files) {
    if (on_files) on_files(std::move(files));
  };
}

QtMainWindow::~QtMainWindow() {
  handler_ = nullptr;  // it may be gone already
  delete shell_;
  // They would tell this window of what still happens to them.
  for (const QPointer<QObject>& shell : left_shells_) delete shell;
}

Rect QtMainWindow::first_place() const {
  if (options_.screen)
    return {0, 0, density_.logical(options_.screen->width),
            density_.logical(options_.screen->height)};
  const std::vector<Rect> screens = screen_rooms();
  Rect place;
  if (const auto kept = load_window_place(options_.place_file)) {
    place = *kept;
  } else {
    place = {0, 0, kFirstWidth, kFirstHeight};
    if (!screens.empty())
      place = place.moved(screens[0].center().x - kFirstWidth / 2,
                          screens[0].center().y - kFirstHeight / 2);
  }
  return clamp_to_screens(place, screens.data(), static_cast<int>(screens.size()));
}

ScreenInfo QtMainWindow::screen() const {
  ScreenInfo info;
  const QSize shown = shell_ ? shell_->size() : QSize(place_.width, place_.height);
  info.resolution = {density_.device(shown.width()), density_.device(shown.height())};
  // What was asked for may not be a whole number of logical pixels.
  if (options_.screen && shown == QSize(place_.width, place_.height))
    info.resolution = *options_.screen;
  info.work_area = {0, 0, info.resolution.width, info.resolution.height};
  info.dpi_x = info.dpi_y = density_.dpi;
  info.form_dpi = static_cast<int>(std::lround(density_.dpi * fitting_scale(shown.width())));
  info.dark_desktop = look_.dark;
  return info;
}

bool QtMainWindow::activate_other_instance(TextView, TextView) {
  if (options_.data_folder.empty()) return false;
  if (!instance_) instance_ = std::make_unique<SingleInstance>(options_.data_folder);
  std::vector<std::string> files;
  for (const std::string& file : options_.files) {
    std::error_code fault;  // the folder that this runs in may be gone
    const std::filesystem::path path = std::filesystem::absolute(file, fault);
    files.push_back(fault ? file : path.string());
  }
  if (options_.new_appointment) files.emplace_back(kNewAppointmentCall);
  const SingleInstance::Joined joined = instance_->join(files);
  // A second window on one calendar is never opened, also when the first is too busy to answer.
  call_answered_ = joined != SingleInstance::Joined::unanswered;
  if (joined != SingleInstance::Joined::first) return true;
  if (instance_->listening_socket() >= 0 && !calls_) {
    calls_ =
        std::make_unique<QSocketNotifier>(instance_->listening_socket(), QSocketNotifier::Read);
    on_signal(calls_.get(), &QSocketNotifier::activated, receiver_.get(), [this] { take_calls(); });
  }
  return false;
}

void QtMainWindow::take_calls() {
  while (auto files = instance_->take_call()) {
    come_forward();
    if (on_files) on_files(std::move(*files));
  }
}

void QtMainWindow::come_forward() {
  // While the program starts there may be nothing but a question to bring forward.
  QWidget* window = QApplication::activeModalWidget();
  if (!window && shell_ && was_shown_) window = shell_;
  if (!window) return;
  window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
  window->show();
  window->raise();
  window->activateWindow();
}

bool QtMainWindow::create(TextView, TextView title, int, MessageHandler& handler) {
  if (shell_) return false;
  handler_ = &handler;
  shell_ = new Shell(density_, events_);
  shell_->setWindowTitle(to_qt(title));
  shell_->setWindowIcon(program_icon());
  shell_->setAccessibleName(to_qt(title));
  shell_->content().setAccessibleName(to_qt(title));
  if (options_.screen) {
    shell_->setFixedSize(place_.width, place_.height);
  } else {
    set_least_size();
    shell_->setGeometry(to_qt(place_));
  }
  shell_->lay_out();  // the create message may ask for places already
  reported_ = screen().resolution;
  send({kMessageCreate, 0, {}, 0});
  return shell_ != nullptr;
}

// What is comfortable, as far as the screen has it.
void QtMainWindow::set_least_size() {
  const QScreen* screen = QGuiApplication::screenAt({place_.center().x, place_.center().y});
  QSize least(density_.scaled(kLeastWidth), density_.scaled(kLeastHeight));
  if (screen) least = least.boundedTo(screen->availableSize());
  shell_->setMinimumSize(least);
}

// The desktop's frame is known only once the window is shown with it, and it must be on the screen
// as well: on a small one the close button or the menu bar would else lie beside it.
void QtMainWindow::fit_frame() {
  if (!shell_ || options_.screen || shell_->isMaximized() || shell_->isFullScreen()) return;
  const std::vector<Rect> screens = screen_rooms();
  const QRect frame = shell_->frameGeometry(), inside = shell_->geometry();
  const Rect fitting =
      clamp_to_screens(from_qt(frame), screens.data(), static_cast<int>(screens.size()));
  if (fitting == from_qt(frame)) return;
  const QRect place =
      to_qt(fitting).adjusted(inside.left() - frame.left(), inside.top() - frame.top(),
                              inside.right() - frame.right(), inside.bottom() - frame.bottom());
  shell_->setMinimumSize(shell_->minimumSize().boundedTo(place.size()));
  shell_->setGeometry(place);
}

void QtMainWindow::destroy() {
  if (!shell_) return;
  remember_place();
  shell_->hide();
  send({kMessageDestroy, 0, {}, 0});
  for (auto& [id, timer] : timers_) {
    timer->stop();
    timer->deleteLater();  // this may be its own message
  }
  timers_.clear();
  handler_ = nullptr;
  shell_->deleteLater();  // this may be called from one of its events
  left_shells_.emplace_back(std::exchange(shell_, nullptr));
  while (wait_cursors_ > 0) hide_wait_cursor();
}

void QtMainWindow::remember_place() {
  if (options_.screen || options_.place_file.empty() || !shell_->isVisible()) return;
  const bool plain = !shell_->isMaximized() && !shell_->isFullScreen();
  const Rect place = from_qt(plain ? shell_->geometry() : shell_->normalGeometry());
  if (!place.empty()) save_window_place(options_.place_file, place);
}

void QtMainWindow::move(const Rect& place) {
  if (shell_) shell_->place_content(place);
}

void QtMainWindow::show() {
  if (!shell_) return;
  if (!std::exchange(was_shown_, true))
    after(kFrameMilliseconds, receiver_.get(), [this] { fit_frame(); });
  shell_->show();
  shell_->content().setFocus();
}

bool QtMainWindow::is_active() const {
  return shell_ && shell_->isVisible() && !shell_->isMinimized();
}

bool QtMainWindow::send(const Message& message) {
  return handler_ && handler_->handle_message(message);
}

void QtMainWindow::post(const Message& message) { receiver_->post(message); }

void QtMainWindow::post_quit(int code) {
  quit_code_ = code;
  QCoreApplication::instance()->setProperty(kQuitPosted, true);
  QCoreApplication::exit(code);
}

int QtMainWindow::run() {
  // The quit message may have been posted before there was a loop to end.
  if (!quit_code_) quit_code_ = QApplication::exec();
  return *quit_code_;
}

void QtMainWindow::invalidate() { receiver_->invalidate(); }

void QtMainWindow::copy_surface(Surface& surface, Size size) {
  auto* picture = dynamic_cast<QtSurface*>(&surface);
  if (!shell_ || !picture) return;
  ContentArea& content = shell_->content();
  QPainter painter(&content);
  picture->paint(painter, size, density_.ratio);
  if (picture->published()) note_first_paint();
}

void QtMainWindow::note_first_paint() {
  if (painted_) return;
  painted_ = true;
  // The toolkit shows what was painted when the paint event has returned.
  later(receiver_.get(), [this] {
    if (on_first_paint) on_first_paint();
  });
}

void QtMainWindow::start_timer(int id, int milliseconds) {
  QTimer*& timer = timers_[id];
  if (!timer) {
    timer = new QTimer(receiver_.get());
    on_signal(timer, &QTimer::timeout, receiver_.get(), [this, id] {
      send({kMessageTimer, static_cast<std::uint32_t>(id), {}, 0});
    });
  }
  timer->start(milliseconds);
}

void QtMainWindow::stop_timer(int id) {
  const auto found = timers_.find(id);
  if (found != timers_.end()) found->second->stop();  // it may be the one that is firing
}

bool QtMainWindow::pen_is_down() const { return shell_ && shell_->content().pointer().is_down(); }

void QtMainWindow::let_pointer_go() {
  if (shell_) shell_->content().pointer().let_go();
}

void QtMainWindow::show_wait_cursor() {
  if (wait_cursors_++ == 0) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

void QtMainWindow::hide_wait_cursor() {
  if (wait_cursors_ > 0 && --wait_cursors_ == 0) QGuiApplication::restoreOverrideCursor();
}

void QtMainWindow::show_label(const HoverLabel& label) {
  if (shell_) shell_->show_label(label);
}

void QtMainWindow::hide_label() {
  if (shell_) shell_->hide_label();
}

// The menu gets the release.
std::uint32_t QtMainWindow::track_menu(const std::vector<MenuItem>& items, Point at) {
  if (!shell_) return 0;
  let_pointer_go();
  return run_menu_at(shell_->content(), at, density_, items);
}

void QtMainWindow::show_notice(const HoverLabel& notice) {
  if (shell_) shell_->show_notice(notice);
}

void QtMainWindow::hide_notice() {
  if (shell_) shell_->hide_notice();
}

void QtMainWindow::set_accessible_view(AccessibleView* view) {
  if (shell_) shell_->content().set_accessible_view(view);
}

void QtMainWindow::accessible_changed() {
  if (shell_) shell_->content().note_accessible_change();
}

void QtMainWindow::close_wanted() {
  if (auto* layer = shell_ ? dynamic_cast<ModalLayer*>(shell_->cover()) : nullptr) {
    if (layer->close_wanted) layer->close_wanted();
    return;
  }
  if (!send({kMessageClose, 0, {}, 0})) destroy();
}

// Forms are as wide as the least window: where they have grown out of this one they would have to
// be scrolled sideways for every line.
double QtMainWindow::fitting_scale(int width) const {
  const double room = width / density_.unit() / kLeastWidth;
  return std::min(look_.text_scale, std::max(1.0, room));
}

// Whether it is another one.
bool QtMainWindow::take_scale() {
  const double scale = fitting_scale(shell_ ? shell_->width() : place_.width);
  if (!form_densities_.empty() && density_.desktop_text == scale) return false;
  density_.desktop_text = scale;
  form_densities_.push_back(density_.grown());
  return true;
}

void QtMainWindow::take_colors() {
  density_.colors = look_.dark ? &kDarkColors : &kLightColors;
  for (Density& density : form_densities_) density.colors = density_.colors;
  const QPalette palette = look_palette(*density_.colors);
  QToolTip::setPalette(palette);
  if (shell_) shell_->setPalette(palette);
  for (QWidget* window : QApplication::topLevelWidgets())
    if (dynamic_cast<ModalLayer*>(window)) window->setPalette(palette);
}

void QtMainWindow::take_look(const DesktopLook& look) {
  const DesktopLook before = std::exchange(look_, look);
  const bool scaled = take_scale();
  if (look.dark != before.dark) take_colors();
  if (look == before || !shell_) return;
  if (on_look) on_look();
  if (scaled) send({kMessageSettingChange, kScreenRotated, {}, 0});
}

void QtMainWindow::follow_desktop() {
  if (!options_.look) take_look(look_of_desktop(desktop_settings_));
}

// Not all that can be changed there is told.
void QtMainWindow::ask_desktop() {
  if (options_.look) return;
  ask_desktop_settings_later(receiver_.get(), [this](const DesktopSettings& settings) {
    desktop_settings_ = settings;
    follow_desktop();
  });
}

void QtMainWindow::resized() {
  const Size size = screen().resolution;
  if (size == reported_) return;
  reported_ = size;
  if (take_scale() && on_look) on_look();
  send({kMessageSettingChange, kScreenRotated, {}, 0});
}

}  // namespace orvello
