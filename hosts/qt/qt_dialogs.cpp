#include "hosts/qt/qt_dialogs.h"

#include <QPointer>
#include <QPolygon>
#include <algorithm>

#include "draw/form_layout.h"
#include "draw/mirrored.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/form_widget.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/qt_dialog.h"
#include "hosts/qt/qt_sheet.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

// Only what lies inside the outline is seen and takes presses.
void cut_out(QWidget& form, const DialogTemplate& dialog, const Density& density) {
  if (dialog.outline.empty()) return;
  QPolygon polygon;
  for (const Point& point : dialog.outline) {
    const Point at = is_right_to_left() ? mirrored(point, dialog.place.width) : point;
    polygon << QPoint(density.logical(at.x), density.logical(at.y));
  }
  // With room for the smooth edge around it.
  const QRegion inside(polygon);
  QRegion all = inside;
  for (const int x : {-1, 0, 1, 2})
    for (const int y : {-1, 0, 1, 2}) all |= inside.translated(x, y);
  form.setMask(all);
}

}  // namespace

FormColors QtDialogs::colors() const { return *window_.density().colors; }

// What only the program draws on a popup belongs to the view that it stands over.
const Density& QtDialogs::density_of(const DialogTemplate& dialog) const {
  const bool drawn = std::all_of(dialog.controls.begin(), dialog.controls.end(),
                                 [](const ControlTemplate& control) {
                                   return control.kind == ControlTemplate::Kind::custom ||
                                          control.kind == ControlTemplate::Kind::report;
                                 });
  return dialog.popup && drawn ? window_.density() : window_.form_density();
}

QRect QtDialogs::modal_place(const DialogTemplate& dialog, const FormWidget& form, QSize whole) {
  const Density& density = density_of(dialog);
  const Size room{whole.width(), whole.height()};
  if (!dialog.popup) return to_qt(sheet_place(dialog, density.unit(), form.title_height(), room));
  const Size design = design_size(dialog);
  QRect place(QPoint(0, 0), QSize(density.scaled(design.width), density.scaled(design.height)));
  if (dialog.place.empty()) {
    place.moveCenter(QRect(QPoint(0, 0), whole).center());
  } else {
    place = density.logical(dialog.place);
    if (Shell* shell = window_.shell())
      place = turned(place, shell->content().width()).translated(shell->content().pos());
  }
  // The border is around it, so that the controls get all of the place.
  const int edge = form.border();
  place.adjust(-edge, -edge, edge, edge);
  return to_qt(popup_place({place.x(), place.y(), place.width(), place.height()}, room));
}

int QtDialogs::run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) {
  const Density& density = density_of(dialog);
  const QPointer<ModalLayer> layer = new ModalLayer(window_);
  const QPointer<FormWidget> form = new FormWidget(layer, density, locale_, dialog, !dialog.popup);
  const Size design = design_size(dialog);
  layer->place_sheet = [&](QSize whole) {
    if (layer->isWindow()) return QRect(QPoint(0, 0), whole);
    return modal_place(dialog, *form, whole);
  };
  QtDialog controls(form, density, procedure, make_event_queue());
  controls.closed = [layer](int) {
    if (layer) layer->end();
  };
  form->close_wanted = [&] { controls.close_wanted(); };
  layer->close_wanted = form->close_wanted;
  layer->accept_wanted = [form] { form->press_default(); };
  layer->shown = [form] { form->come(true); };
  if (dialog.popup) {
    layer->pressed_beside = [&] { controls.tell(DialogEvent::Kind::focus_lost); };
    layer->released = [form](QPointF global) { form->release_at(global); };
    layer->lets_presses_through = dialog.press_goes_on;
    cut_out(*form, dialog, density);
  }
  const QSize own_window(density.scaled(design.width),
                         density.scaled(design.height) + form->title_height());
  layer->prepare(*form, own_window);
  form->lay_out();
  controls.start();
  if (!controls.is_closed() && layer) layer->run(*form, own_window);
  const int result = controls.result();
  if (layer) layer->leave();
  return result;
}

std::unique_ptr<Dialog> QtDialogs::open_modeless(const DialogTemplate& dialog,
                                                 DialogProcedure& procedure) {
  Shell* shell = window_.shell();
  if (!shell) return nullptr;
  auto* form = new FormWidget(&shell->content(), window_.density(), locale_, dialog, false);
  form->painted = [this] { window_.note_first_paint(); };
  const auto queue = make_event_queue();
  auto controls = std::make_unique<QtDialog>(form, window_.density(), procedure, queue);
  shell->add_sheet(form);
  form->lay_out();
  controls->start();
  form->show();
  form->come(false);
  return controls;
}

int QtDialogs::run_sheet(TextView title, const std::vector<SheetPage>& pages) {
  if (pages.empty() || !window_.shell()) return kSheetFailed;
  return QtSheet(window_, locale_, to_qt(title), pages).run();
}

}  // namespace orvello
