// Forms with every kind of control, and a procedure that writes down what it is told.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ports/dialog.h"

namespace orvello::test {

// Ids of the controls of the form.
inline constexpr int kLabel = 600, kLine = 601, kLineEdit = 602, kEdit = 603, kMultiLine = 604,
                     kDropList = 605, kCombo = 606, kDate = 607, kSlider = 608, kCheck = 609,
                     kToggle = 610, kPicture = 611, kRadioOne = 612, kRadioTwo = 613, kList = 614,
                     kMultiList = 615, kReport = 616, kCalendar = 617, kNotes = 618, kCustom = 619,
                     kButton = 620, kDefault = 1;
inline constexpr int kEditLimit = 8, kComboLimit = 12;

// Four sections and a row of buttons below them; kLineEdit is hidden where kLine stands.
DialogTemplate every_kind_form();

// Two groups of radio buttons that alternate with fields, on the second of three steps.
inline constexpr int kType = 650, kNext = 651, kOften = 660, kOftenCount = 661, kUntil = 662,
                     kUntilDate = 663, kSeldom = 664, kSeldomCount = 665, kForever = 666,
                     kLast = 670;
DialogTemplate step_form();

// Three pages with a field and a button each.
inline constexpr int kPageEdit = 680, kPageButton = 681, kPages = 3;
std::vector<DialogTemplate> sheet_pages();

// Keeps what it is told as "changed 603"; a control that changes on and on is told of once. Paints
// and the pointer's moves are not kept.
class RecordingProcedure : public DialogProcedure {
 public:
  explicit RecordingProcedure(std::string name = {}, std::vector<std::string>* told = nullptr)
      : name_(std::move(name)), told_(told ? told : &own_) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;
  bool may_close(Dialog& dialog) override;
  bool may_leave(Dialog& dialog) override;
  // What was told since it was last asked.
  std::vector<std::string> take();

  std::function<void(Dialog&, const DialogEvent&)> act;  // called for all but paints
  bool agrees = true;                                    // to closing and to leaving
  DialogEvent last;
  int paints = 0;
  bool told_inside = false;  // an event came while another one was being handled

 private:
  std::string name_;  // in front of what is told: of a page
  std::vector<std::string> own_;
  std::vector<std::string>* told_;
  bool inside_ = false;
};

}  // namespace orvello::test
