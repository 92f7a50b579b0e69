#include "hosts/win32/custom_control.h"
#include "hosts/win32/date_controls.h"
#include "hosts/win32/make_control.h"
#include "hosts/win32/notes_window.h"
#include "hosts/win32/report_window.h"
#include "hosts/win32/slider_control.h"

namespace orvello {

std::unique_ptr<FormControl> make_rich_control(const ControlTemplate& made, const FormLook& look,
                                               const ControlSink& sink) {
  using Kind = ControlTemplate::Kind;
  switch (made.kind) {
    case Kind::report:
      return std::make_unique<ReportWindow>(made, look, sink);
    case Kind::custom:
      return std::make_unique<CustomControl>(made, look, sink);
    case Kind::date_picker:
      return std::make_unique<DatePickerControl>(made, look, sink);
    case Kind::month_calendar:
      return std::make_unique<CalendarControl>(made, look, sink);
    case Kind::slider:
      return std::make_unique<SliderControl>(made, look, sink);
    case Kind::notes:
      return std::make_unique<NotesWindow>(made, look, sink);
    default:
      return nullptr;
  }
}

}  // namespace orvello
