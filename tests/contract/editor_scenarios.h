// A person who writes appointments: the editor and its companions, driven on every host.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "editor/editor_forms.h"
#include "hosts/headless/headless_host.h"
#include "tests/contract/dialogs_bench.h"

namespace orvello::test {

// The dialogs are the host's; everything else is there in memory to look at.
class EditorScenarios : public testing::TestWithParam<MakeBench> {
 protected:
  void SetUp() override;
  // Opens the editor, with the person in front of what comes first.
  void edit(const EditorChoice& choice, const std::function<void()>& person);
  void write_new(const std::function<void()>& person) { edit({}, person); }
  // What the person does as soon as the next dialog stands in front of this one.
  void then(std::function<void()> person) { bench_->in_front(std::move(person)); }

  void tap(int control) {
    ++taps_;
    bench_->tap(control);
  }
  int taps() const { return taps_; }
  void write(int line, TextView text);  // in place of what stands there
  void choose(int line, int list, int row);
  void pick(int date, const MonthDayYear& day) { bench_->pick_date(date, day); }
  std::vector<AppointmentRecord> records();
  AppointmentRecord stored(std::int32_t oid) {
    const auto loaded = device_.store.load(oid);
    return loaded && *loaded ? **loaded : AppointmentRecord();
  }
  AppointmentRecord only_record();
  Text last_box() const {
    return device_.boxes.shown.empty() ? Text() : device_.boxes.shown.back().text;
  }
  std::size_t boxes() const { return device_.boxes.shown.size(); }
  std::int32_t put_weekly(int day, int hour, TextView subject);

  int taps_ = 0;
  HeadlessHost device_;
  std::unique_ptr<DialogsBench> bench_;
  std::unique_ptr<Host> host_;
  SettingsRecord settings_;
  ScreenLayout screen_;
  int generation_ = 0;
  std::unique_ptr<SettingsVolume> volume_;
  std::unique_ptr<StoreSession> session_;
  std::unique_ptr<EditHistory> history_;
  std::unique_ptr<EditorForms> forms_;
};

}  // namespace orvello::test
