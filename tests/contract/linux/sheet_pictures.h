// The settings sheet on the screens that there are. With ORVELLO_PICTURES=folder it is also saved
// as it looks there.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QScrollArea>
#include <QScrollBar>
#include <cstdlib>
#include <string>

#include "tests/contract/linux/qt_person.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {

struct SheetScreen {
  const char* name;
  Size size;
  int dpi;
  // For the rest of the device, which is in memory.
  ScreenInfo info() const { return {size, {0, 0, size.width, size.height}, dpi, dpi}; }
};
inline constexpr SheetScreen kSheetScreens[] = {{"portrait", {240, 320}, 96},
                                                {"landscape", {320, 240}, 96},
                                                {"double", {480, 640}, 192},
                                                {"desktop", {1000, 700}, 96}};

// Nothing of what is seen has to be scrolled to.
inline void look_at_sheet(QtPerson& person, const std::string& name) {
  person.settle();
  for (QScrollArea* area : person.shell()->findChildren<QScrollArea*>()) {
    if (!area->isVisible()) continue;
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << name;
    EXPECT_EQ(area->verticalScrollBar()->maximum(), 0) << name;
  }
  const char* folder = std::getenv("ORVELLO_PICTURES");
  if (!folder) return;
  QDir().mkpath(QString::fromLocal8Bit(folder));
  person.shell()->grab().save(QString::fromStdString(folder + ("/" + name) + ".png"));
}

}  // namespace orvello::test
