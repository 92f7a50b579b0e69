#include "tests/contract/linux/qt_person.h"

#include <QApplication>
#include <QListWidget>
#include <QWindow>
#include <memory>

#include "ports/messages.h"

namespace orvello::test {
namespace {

constexpr int kTries = 100, kPauseMilliseconds = 10;

// As soon as something is there, unless it never comes.
void when(QObject& context, std::function<bool()> there, std::function<void()> then,
          int tries = kTries) {
  QTimer::singleShot(kPauseMilliseconds, &context, [&context, there, then, tries] {
    if (there()) return then();
    if (tries > 0) when(context, there, then, tries - 1);
  });
}

Qt::Key key_of(std::uint32_t code) {
  static const std::map<std::uint32_t, Qt::Key> keys = {
      {kKeyReturn, Qt::Key_Return}, {kKeyEscape, Qt::Key_Escape},     {kKeySpace, Qt::Key_Space},
      {kKeyUp, Qt::Key_Up},         {kKeyDown, Qt::Key_Down},         {kKeyLeft, Qt::Key_Left},
      {kKeyRight, Qt::Key_Right},   {kKeyPageDown, Qt::Key_PageDown}, {kKeyEnd, Qt::Key_End},
      {kKeyHome, Qt::Key_Home},     {kKeyPageUp, Qt::Key_PageUp},     {kKeyDelete, Qt::Key_Delete}};
  return keys.at(code);
}

}  // namespace

void QtPerson::settle() {
  for (int i = 0; i < 5; ++i) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, kPauseMilliseconds);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

void QtPerson::wait(int) {
  wait_until([] { return false; }, 40);
}

void QtPerson::in_front(std::function<void()> person) {
  const QWidget* below = window_.window->shell()->cover();
  const auto there = [this, below] {
    QWidget* cover = window_.window->shell()->cover();
    return cover && cover != below && form();
  };
  when(alive_, there, [this, person] {
    const QPointer<QWidget> mine = window_.window->shell()->cover();
    settle();
    person();
    settle();
    if (mine && mine == window_.window->shell()->cover()) press_close();
  });
}

void choose_in_next_menu(QObject& context, std::uint32_t command) {
  const auto there = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
  when(context, there, [command, there] {
    QMenu* menu = there();
    for (QAction* action : menu->actions())
      if (command != 0 && action->data().toUInt() == command && action->isEnabled())
        return QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    QTest::keyClick(menu, Qt::Key_Escape);
  });
}

void QtPerson::choose_in_menu(std::uint32_t command) { choose_in_next_menu(alive_, command); }

QWidget* QtPerson::top() {
  QWidget* cover = window_.window->shell()->cover();
  return cover ? cover : window_.content();
}

FormWidget* QtPerson::form() {
  for (QWidget* widget : top()->findChildren<QWidget*>())
    if (auto* form = dynamic_cast<FormWidget*>(widget); form && form->isVisible()) return form;
  return nullptr;
}

QWidget* QtPerson::find(int control) {
  QWidget* widget = form() ? form()->control(control) : nullptr;
  return widget && widget->isVisible() ? widget : nullptr;
}

bool QtPerson::seen(int control) {
  if (!find(control)) return false;
  const QRegion mask = form()->mask();
  return mask.isEmpty() || mask.intersects(form()->rect());
}

bool QtPerson::enabled(int control) { return form()->control(control)->isEnabled(); }

QWidget* QtPerson::reach(int control) {
  settle();
  QWidget* widget = find(control);
  if (!widget || !widget->isEnabled()) return nullptr;
  auto* bar = form()->findChild<QScrollArea*>()->verticalScrollBar();
  const int top = widget->geometry().top(), bottom = widget->geometry().bottom() + 1;
  if (top < bar->value() || bottom > bar->value() + bar->pageStep())
    bar->setValue(bottom - bar->pageStep());
  return widget;
}

void QtPerson::mouse(QEvent::Type type, QWidget& widget, QPoint at) {
  QWindow* window = shell()->windowHandle();
  const QPoint place = widget.mapTo(shell(), at);
  if (type == QEvent::MouseButtonPress) QTest::mousePress(window, Qt::LeftButton, {}, place);
  if (type == QEvent::MouseMove) QTest::mouseMove(window, place);
  if (type == QEvent::MouseButtonRelease) QTest::mouseRelease(window, Qt::LeftButton, {}, place);
}

void QtPerson::click(QWidget& widget, QPoint at) {
  mouse(QEvent::MouseButtonPress, widget, at);
  mouse(QEvent::MouseButtonRelease, widget, at);
  settle();
}

void QtPerson::tap(int control) {
  if (QWidget* widget = reach(control)) click(*widget, widget->rect().center());
}

void QtPerson::tap_row(int control, int row) {
  QWidget* widget = reach(control);
  auto* view = dynamic_cast<QAbstractItemView*>(widget);
  if (!view) return;
  const QModelIndex index = view->model()->index(row, 0);
  view->scrollTo(index);
  const QRect place = view->visualRect(index).intersected(view->viewport()->rect());
  click(*view->viewport(), place.center());
}

void QtPerson::choose_row(int control, int row) {
  QWidget* widget = reach(control);
  if (!widget) return;
  if (dropped_down() != control) click(*widget, QPoint(widget->width() - 8, widget->height() / 2));
  auto* drop = top()->findChild<QWidget*>(QStringLiteral("drop"));
  if (!drop) drop = shell()->findChild<QWidget*>(QStringLiteral("drop"));
  if (!drop) return;
  auto* list = drop->findChild<QListWidget*>();
  list->scrollToItem(list->item(row));
  click(*list->viewport(), list->visualItemRect(list->item(row)).center());
}

void QtPerson::type(TextView text) {
  settle();
  QWidget* focus = shell()->focusWidget();
  for (const QChar letter : to_qt(text)) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, letter);
    QCoreApplication::sendEvent(focus, &press);
  }
  settle();
}

void QtPerson::key(std::uint32_t code, bool control_held, bool shift_held) {
  settle();
  Qt::KeyboardModifiers held;
  if (control_held) held |= Qt::ControlModifier;
  if (shift_held) held |= Qt::ShiftModifier;
  QTest::keyClick(shell()->windowHandle(), key_of(code), held);
  settle();
}

void QtPerson::tab(bool back) {
  settle();
  QTest::keyClick(shell()->windowHandle(), back ? Qt::Key_Backtab : Qt::Key_Tab,
                  back ? Qt::ShiftModifier : Qt::NoModifier);
  settle();
}

// Turns by the arrows and taps the day.
void QtPerson::pick_in(MonthCalendar& calendar, const MonthDayYear& date) {
  const auto tap_part = [&](std::size_t part) {
    const Rect place = calendar.accessible_parts()[part].place;
    click(calendar, QPoint(place.center().x, place.center().y));
  };
  while (calendar.date().year != date.year) tap_part(calendar.date().year < date.year ? 3 : 2);
  while (calendar.date().month != date.month) tap_part(calendar.date().month < date.month ? 1 : 0);
  const QPointer<QWidget> alive(&calendar);
  const Text day = to_utf16(std::to_string(date.day) + " ");
  const std::vector<AccessibleCell> parts = calendar.accessible_parts();
  // Days of the months before and after carry the same numbers.
  bool month_started = false;
  for (std::size_t part = 4; part < parts.size(); ++part) {
    month_started = month_started || starts_with(parts[part].name, u"1 ");
    if (month_started && starts_with(parts[part].name, day)) return tap_part(part);
  }
}

void QtPerson::pick_date(int control, const MonthDayYear& date) {
  QWidget* widget = reach(control);
  if (auto* calendar = dynamic_cast<MonthCalendar*>(widget)) return pick_in(*calendar, date);
  auto* picker = dynamic_cast<DatePicker*>(widget);
  if (!picker) return;
  click(*picker, picker->rect().center());
  pick_in(*picker->calendar(), date);
}

void QtPerson::slide(int control, int position) {
  auto* slider = qobject_cast<QSlider*>(reach(control));
  if (!slider) return;
  const int y = slider->height() / 2;
  const int knob = slider->width() * (slider->value() - slider->minimum()) /
                   std::max(1, slider->maximum() - slider->minimum());
  mouse(QEvent::MouseButtonPress, *slider, {knob, y});
  int x = 0;
  for (; x < slider->width() && slider->value() != position; ++x)
    mouse(QEvent::MouseMove, *slider, {x, y});
  mouse(QEvent::MouseButtonRelease, *slider, {std::max(0, x - 1), y});
  settle();
}

void QtPerson::pen(QEvent::Type type, int control, Point point) {
  QWidget* widget = type == QEvent::MouseButtonPress ? reach(control) : find(control);
  if (!widget) return;
  mouse(type, *widget, {point.x, point.y});
  settle();
}

void QtPerson::press_other_button(int control, Point point) {
  QWidget* widget = reach(control);
  if (!widget) return;
  const QPoint place = widget->mapTo(shell(), QPoint(point.x, point.y));
  QTest::mouseClick(shell()->windowHandle(), Qt::RightButton, {}, place);
  settle();
}

void QtPerson::turn_wheel(int control, Point point, int notches, bool sideways) {
  QWidget* widget = reach(control);
  if (!widget) return;
  constexpr int kNotch = 120;
  const QPoint place = widget->mapTo(shell(), QPoint(point.x, point.y));
  const QPoint turned(sideways ? notches * kNotch : 0, sideways ? 0 : notches * kNotch);
  QWheelEvent event(place, shell()->mapToGlobal(place), {}, turned, Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(shell()->windowHandle(), &event);
  settle();
}

void QtPerson::draw(int notes, const std::vector<Point>& stroke) {
  auto* pane = dynamic_cast<NotesPane*>(reach(notes));
  if (!pane) return;
  const auto place = [&](Point point) {
    return QPoint(point.x - pane->horizontalScrollBar()->value(),
                  point.y - pane->verticalScrollBar()->value());
  };
  mouse(QEvent::MouseButtonPress, *pane->viewport(), place(stroke.front()));
  for (const Point& point : stroke) mouse(QEvent::MouseMove, *pane->viewport(), place(point));
  mouse(QEvent::MouseButtonRelease, *pane->viewport(), place(stroke.back()));
  settle();
}

void QtPerson::select_text(int notes, int start, int length) {
  auto* pane = dynamic_cast<NotesPane*>(find(notes));
  QTextCursor cursor = pane->textCursor();
  cursor.setPosition(start);
  cursor.setPosition(start + length, QTextCursor::KeepAnchor);
  pane->setTextCursor(cursor);
  settle();
}

void QtPerson::press(const char* name) {
  settle();
  for (QWidget* widget : top()->findChildren<QWidget*>(QLatin1String(name)))
    if (widget->isVisible()) return click(*widget, widget->rect().center());
  // A handheld's sheet is cancelled by the button in its title.
  if (QLatin1String(name) == QLatin1String("cancel")) press("close");
}

void QtPerson::press_close() {
  settle();
  auto* button = top()->findChild<QWidget*>(QStringLiteral("close"));
  if (button && button->isVisible()) return click(*button, button->rect().center());
  key(kKeyEscape, false, false);
}

void QtPerson::show_page(int page) {
  settle();
  auto* tabs = top()->findChild<QTabBar*>();
  // One that is out of sight comes with the arrow at that end.
  for (int taps = 0; taps < 8 && !tabs->visibleRegion().contains(tabs->tabRect(page).center());
       ++taps) {
    const bool back = tabs->x() + tabs->tabRect(page).center().x() < 0;
    for (auto* arrow : tabs->parentWidget()->parentWidget()->findChildren<QAbstractButton*>())
      if (arrow->isEnabled() && (arrow->x() == 0) == back) click(*arrow, arrow->rect().center());
  }
  click(*tabs, tabs->tabRect(page).center());
}

int QtPerson::focused() {
  for (const QWidget* at = shell()->focusWidget(); at && form(); at = at->parentWidget()) {
    const QString name = at->objectName();
    if (form()->isAncestorOf(at) && name.startsWith(QStringLiteral("control")))
      return name.mid(7).toInt();
  }
  return 0;
}

Text QtPerson::title() {
  auto* sheet = top()->findChild<QWidget*>(QStringLiteral("sheet"));
  return from_qt(sheet ? sheet->accessibleName() : form()->title());
}

int QtPerson::dropped_down() {
  for (const ControlTemplate& control : form()->shown_template().controls) {
    const auto* choice = dynamic_cast<ChoiceBox*>(form()->control(control.id));
    const auto* date = dynamic_cast<DatePicker*>(form()->control(control.id));
    if ((choice && choice->is_open()) || (date && date->is_open())) return control.id;
  }
  return 0;
}

}  // namespace orvello::test
