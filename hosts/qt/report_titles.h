// The titles of a report's columns, above its rows.
#pragma once

#include <QWidget>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

class ReportModel;

class ReportTitles : public Guarded<QWidget> {
 public:
  ReportTitles(QWidget* parent, const ReportModel& model, const Density& density)
      : Guarded(parent), model_(model), density_(density) {}
  int wanted_height() const;         // logical pixels; 0: no column has one
  void scroll_to(int logical_left);  // as far as the rows are scrolled sideways

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const ReportModel& model_;
  const Density& density_;
  int left_ = 0;
};

}  // namespace orvello
