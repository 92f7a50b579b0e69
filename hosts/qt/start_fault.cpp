#include "hosts/qt/start_fault.h"

#include <unistd.h>

#include <QApplication>
#include <iostream>

#include "hosts/linux/display.h"
#include "hosts/qt/guarded_application.h"
#include "hosts/qt/qt_host.h"

namespace orvello {

bool started_by_launcher() {
  const QString platform = QGuiApplication::platformName();
  const bool seen = platform == u"xcb" || platform.startsWith(u"wayland");
  return seen && ::isatty(STDERR_FILENO) == 0;
}

void tell_start_fault(MessageBoxes& boxes, const std::string& sentence) {
  std::cerr << "orvello: " << sentence << std::endl;
  if (started_by_launcher())
    boxes.show(to_utf16(sentence), u"Orvello", BoxIcon::error, BoxButtons::ok, false);
}

void tell_start_fault(int argc, char** argv, const std::string& sentence) {
  std::cerr << "orvello: " << sentence << std::endl;
  if (::isatty(STDERR_FILENO) != 0 || !display_reachable()) return;
  const auto application = QtHost::make_application(argc, argv, false);
  QtMainWindow window({});
  QtMessageBoxes boxes(window, u"en");
  if (started_by_launcher())
    boxes.show(to_utf16(sentence), u"Orvello", BoxIcon::error, BoxButtons::ok, false);
}

// A machine without a session manager has no runtime folder; the toolkit makes do, and need not
// tell every user so.
void handle_toolkit_message(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtFatalMsg && QGuiApplication::screens().isEmpty()) start_without_this_display();
  if (!text.startsWith(u"QStandardPaths: XDG_RUNTIME_DIR")) std::cerr << text.toStdString() << "\n";
}

}  // namespace orvello
