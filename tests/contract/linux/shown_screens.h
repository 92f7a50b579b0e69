// The screens that there are, and what is seen on them. With ORVELLO_PICTURES=folder that is also
// saved as it looks there.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QScrollArea>
#include <QScrollBar>
#include <cstdlib>
#include <string>

#include "tests/contract/linux/qt_person.h"

namespace orvello::test {

struct ShownScreen {
  const char* name;
  Size size;
  int dpi;
  DesktopLook look{};
  // For the rest of the device, which is in memory.
  ScreenInfo info() const { return {size, {0, 0, size.width, size.height}, dpi, dpi}; }
  std::string name_in(bool russian) const { return std::string(name) + (russian ? "-ru" : "-en"); }
};
inline constexpr ShownScreen kShownScreens[] = {{"portrait", {240, 320}, 96},
                                                {"landscape", {320, 240}, 96},
                                                {"double", {480, 640}, 192},
                                                {"desktop", {1000, 700}, 96}};

// Calls test(screen, russian) for each screen in each language.
template <typename Test>
void on_all_screens(Test test) {
  for (const ShownScreen& screen : kShownScreens)
    for (const bool russian : {false, true}) {
      SCOPED_TRACE(screen.name_in(russian));
      test(screen, russian);
    }
}

inline void save_picture(QtPerson& person, const std::string& name) {
  const char* folder = std::getenv("ORVELLO_PICTURES");
  if (!folder) return;
  QDir().mkpath(QString::fromLocal8Bit(folder));
  person.settle();
  person.shell()->grab().save(QString::fromStdString(folder + ("/" + name) + ".png"));
}

// Nothing of what is seen has to be scrolled to.
inline void expect_seen_whole(QtPerson& person, const std::string& name) {
  person.settle();
  for (QScrollArea* area : person.shell()->findChildren<QScrollArea*>()) {
    if (!area->isVisible()) continue;
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << name;
    EXPECT_EQ(area->verticalScrollBar()->maximum(), 0) << name;
  }
  save_picture(person, name);
}

}  // namespace orvello::test
