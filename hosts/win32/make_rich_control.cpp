#include "hosts/win32/custom_control.h"
#include "hosts/win32/make_control.h"
#include "hosts/win32/report_window.h"

namespace orvello {

std::unique_ptr<FormControl> make_rich_control(const ControlTemplate& made, const FormLook& look,
                                               const ControlSink& sink) {
  using Kind = ControlTemplate::Kind;
  switch (made.kind) {
    case Kind::report:
      return std::make_unique<ReportWindow>(made, look, sink);
    case Kind::custom:
      return std::make_unique<CustomControl>(made, look, sink);
    default:
      return nullptr;
  }
}

}  // namespace orvello
