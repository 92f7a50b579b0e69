#include "hosts/win32/make_control.h"

#include "hosts/win32/choice_control.h"
#include "hosts/win32/edit_control.h"
#include "hosts/win32/label_control.h"
#include "hosts/win32/list_control.h"
#include "hosts/win32/press_control.h"

namespace orvello {

std::unique_ptr<FormControl> make_form_control(const ControlTemplate& made, const FormLook& look,
                                               const ControlSink& sink) {
  using Kind = ControlTemplate::Kind;
  switch (made.kind) {
    case Kind::label:
      return std::make_unique<LabelControl>(made, look, sink);
    case Kind::line:
    case Kind::button:
    case Kind::default_button:
    case Kind::picture_button:
    case Kind::check_box:
    case Kind::radio_button:
    case Kind::toggle:
      return std::make_unique<PressControl>(made, look, sink);
    case Kind::edit:
    case Kind::multi_line_edit:
      return std::make_unique<EditControl>(made, look, sink);
    case Kind::drop_list:
    case Kind::combo:
      return std::make_unique<ChoiceBoxControl>(made, look, sink);
    case Kind::list:
    case Kind::multi_list:
      return std::make_unique<ListBoxControl>(made, look, sink);
    default:
      return make_rich_control(made, look, sink);
  }
}

}  // namespace orvello
