#include "hosts/qt/form_controls.h"

#include "hosts/qt/callbacks.h"
#include "hosts/qt/choice_box.h"
#include "hosts/qt/colored_label.h"
#include "hosts/qt/custom_area.h"
#include "hosts/qt/date_picker.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/flat_button.h"
#include "hosts/qt/flat_choice.h"
#include "hosts/qt/flat_edit.h"
#include "hosts/qt/flat_slider.h"
#include "hosts/qt/line_control.h"
#include "hosts/qt/month_calendar.h"
#include "hosts/qt/notes_pane.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_report.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/row_list.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

// An ampersand is no shortcut.
QString button_text(TextView text) { return to_qt(text).replace(u'&', QStringLiteral("&&")); }

struct Maker {
  QWidget* parent;
  const Density& density;
  const LocaleData& locale;
  const ControlTemplate& control;
  const FormSink& sink;

  std::function<void()> teller(Event kind) const {
    return [tell = sink.tell, kind, id = control.id] { tell(kind, id); };
  }
  template <typename Widget>
  Widget* with_changes(Widget* widget) const {
    widget->changed = teller(Event::changed);
    widget->taken = teller(Event::taken);
    return widget;
  }
  template <typename Button>
  Button* pressed(Button* button) const {
    on_signal(button, &QAbstractButton::clicked, parent, teller(Event::command));
    return button;
  }
  QWidget* label() const;
  QWidget* button() const;
  QWidget* radio() const;
  QWidget* edit() const;
  QWidget* multi_line_edit() const;
  QWidget* choice(bool editable) const;
  QWidget* slider() const;
  QWidget* calendar() const;
  QWidget* notes() const;
  QWidget* make() const;
};

QWidget* Maker::label() const {
  auto* label = new ColoredLabel(to_qt(control.text), parent, density);
  if (control.color) label->set_color(*control.color);
  return label;
}

QWidget* Maker::button() const {
  auto* button = new FlatButton(button_text(control.text), parent, density);
  button->setDefault(control.kind == Kind::default_button);
  button->setCheckable(control.kind == Kind::toggle);
  if (button->isDefault()) button->setFont(widget_font(density, kTextSize, true));
  if (control.image) button->set_picture(to_qt(*control.image));
  return pressed(button);
}

QWidget* Maker::radio() const {
  auto* button = new FlatRadioButton(button_text(control.text), parent, density);
  // An arrow key chooses before it moves the focus; a person hears of the focus first.
  on_signal(button, &QAbstractButton::clicked, button, [button] { button->setFocus(); });
  return pressed(button);
}

QWidget* Maker::edit() const {
  auto* edit = new FlatEdit(parent, density, control.limit);
  edit->set_text(to_qt(control.text));
  on_signal(edit, &QLineEdit::textEdited, parent, teller(Event::changed));
  edit->key_left = [id = control.id, report = sink.report](std::uint32_t key) {
    DialogEvent event{Event::key, id, nullptr, {}};
    event.key = key;
    report(event);
  };
  return edit;
}

QWidget* Maker::multi_line_edit() const {
  auto* edit = new FlatTextEdit(parent, density, control.limit);
  edit->set_text(to_qt(control.text));
  edit->edited = teller(Event::changed);
  return edit;
}

QWidget* Maker::choice(bool editable) const {
  auto* choice = with_changes(new ChoiceBox(parent, density, editable, control.limit));
  if (editable) choice->set_text(control.text);
  return choice;
}

QWidget* Maker::slider() const {
  auto* slider = new FlatSlider(parent, density);
  on_signal(slider, &QSlider::valueChanged, parent, teller(Event::changed));
  on_signal(slider, &QSlider::sliderReleased, parent, teller(Event::taken));
  return slider;
}

QWidget* Maker::calendar() const {
  auto* calendar = new MonthCalendar(parent, density, locale);
  calendar->moved = teller(Event::changed);
  calendar->chosen = teller(Event::taken);
  return calendar;
}

QWidget* Maker::notes() const {
  auto* notes = new NotesPane(parent, density, control.limit);
  notes->changed = teller(Event::changed);
  notes->style_moved = teller(Event::taken);
  return notes;
}

QWidget* Maker::make() const {
  switch (control.kind) {
    case Kind::label:
      return label();
    case Kind::line:
      return pressed(new LineControl(button_text(control.text), parent, density));
    case Kind::button:
    case Kind::default_button:
    case Kind::picture_button:
    case Kind::toggle:
      return button();
    case Kind::check_box:
      return pressed(new FlatCheckBox(button_text(control.text), parent, density));
    case Kind::radio_button:
      return radio();
    case Kind::edit:
      return edit();
    case Kind::multi_line_edit:
      return multi_line_edit();
    case Kind::drop_list:
    case Kind::combo:
      return choice(control.kind == Kind::combo);
    case Kind::date_picker:
      return with_changes(new DatePicker(parent, density, locale));
    case Kind::list:
    case Kind::multi_list:
      return with_changes(new RowList(parent, density, control.kind == Kind::multi_list));
    case Kind::slider:
      return slider();
    case Kind::report:
      return new ReportView(parent, density, control, sink.report);
    case Kind::month_calendar:
      return calendar();
    case Kind::notes:
      return notes();
    case Kind::custom:
      break;
  }
  return new CustomArea(parent, density, control.id, sink.report);
}

}  // namespace

QWidget* make_control(QWidget* parent, const Density& density, const LocaleData& locale,
                      const ControlTemplate& control, const FormSink& sink) {
  return Maker{parent, density, locale, control, sink}.make();
}

bool takes_focus(Kind kind) { return kind != Kind::label; }

Text text_of(QWidget& widget) {
  if (auto* choice = dynamic_cast<ChoiceBox*>(&widget)) return choice->text();
  if (auto* edit = qobject_cast<QLineEdit*>(&widget)) return from_qt(edit->text());
  if (auto* edit = qobject_cast<QPlainTextEdit*>(&widget)) return from_qt(edit->toPlainText());
  if (auto* label = qobject_cast<QLabel*>(&widget)) return from_qt(label->text());
  if (auto* button = qobject_cast<QAbstractButton*>(&widget))
    return from_qt(button->text().replace(QStringLiteral("&&"), QStringLiteral("&")));
  const auto* list = dynamic_cast<RowList*>(&widget);
  const std::vector<int> rows = list ? list->selected() : std::vector<int>();
  return rows.empty() ? Text() : from_qt(list->item(rows.front())->text());
}

void set_text_of(QWidget& widget, TextView text) {
  if (auto* choice = dynamic_cast<ChoiceBox*>(&widget)) choice->set_text(text);
  if (auto* edit = dynamic_cast<FlatEdit*>(&widget)) edit->set_text(to_qt(text));
  if (auto* edit = dynamic_cast<FlatTextEdit*>(&widget)) edit->set_text(to_qt(text));
  if (auto* label = qobject_cast<QLabel*>(&widget)) label->setText(to_qt(text));
  if (auto* button = qobject_cast<QAbstractButton*>(&widget)) {
    button->setText(button_text(text));
    // A line is called after what it is about; a picture after its text.
    if (dynamic_cast<LineControl*>(button))
      button->setAccessibleDescription(to_qt(text));
    else if (!button->accessibleName().isEmpty())
      button->setAccessibleName(to_qt(text));
  }
  auto* list = dynamic_cast<RowList*>(&widget);
  if (!list) return;
  const std::vector<Text> rows = list->rows();
  const auto found = std::find(rows.begin(), rows.end(), text);
  list->select({found == rows.end() ? -1 : static_cast<int>(found - rows.begin())});
}

}  // namespace orvello
