// What is thrown wherever the toolkit calls the program is told and logged once, never goes through
// the toolkit, and the calendar goes on.
#include <gtest/gtest.h>

#include <QPushButton>
#include <QTimer>
#include <thread>

#include "app/drawing_worker.h"
#include "app/own_messages.h"
#include "hosts/qt/qt_dialogs.h"
#include "hosts/qt/qt_surface.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

constexpr int kButton = 1, kDrawn = 2, kRows = 3;

DialogTemplate form() {
  DialogTemplate dialog;
  dialog.id = 501;
  dialog.controls = {{ControlTemplate::Kind::button, kButton, u"Do", {8, 8, 66, 26}},
                     {ControlTemplate::Kind::custom, kDrawn, u"", {8, 40, 100, 40}},
                     {ControlTemplate::Kind::report, kRows, u"", {8, 90, 100, 90}}};
  return dialog;
}

class Callbacks : public ::testing::Test, public DialogProcedure {
 protected:
  Callbacks() : application_(*dynamic_cast<GuardedApplication*>(QCoreApplication::instance())) {
    application_.tell = [this](const std::string& sentence, bool ends) {
      told_.push_back(sentence);
      if (ends) test_.window->post_quit(1);
    };
    application_.log = [this](const std::string& sentence) { logged_.push_back(sentence); };
    test_.show();
  }
  ~Callbacks() override { application_.tell = nullptr, application_.log = nullptr; }

  [[noreturn]] void fail() const { throw std::runtime_error(way_); }
  void on(std::uint32_t id) {
    test_.recorder.on_message = [this, id](const Message& message) {
      if (message.id == id) fail();
      return false;
    };
  }
  void on_event(DialogEvent::Kind kind) { bad_event_ = kind; }
  void handle(Dialog&, const DialogEvent& event) override {
    if (event.kind == bad_event_) fail();
  }
  template <typename Widget = QWidget>
  Widget* control(int id) {
    return test_.window->shell()->findChild<Widget*>(QStringLiteral("control%1").arg(id));
  }

  TestWindow test_;
  GuardedApplication& application_;
  std::string way_;
  std::optional<DialogEvent::Kind> bad_event_;
  std::vector<std::string> told_, logged_;
};

TEST_F(Callbacks, WhateverTheyThrowIsToldOnceAndTheCalendarGoesOn) {
  QtMainWindow& window = *test_.window;
  QtDialogs dialogs(window);
  std::unique_ptr<Dialog> dialog;
  ScratchFolder folder;
  QtWindowOptions options;
  options.data_folder = folder.path();
  QtMainWindow first(options);
  ASSERT_FALSE(first.activate_other_instance(u"", u""));
  first.on_files = [this](std::vector<std::string>) { fail(); };
  DrawingWorker worker(window);
  worker.set_surface(std::make_unique<QtSurface>(Size{8, 8}), {8, 8});
  worker.start();
  std::vector<std::jthread> callers;
  using Event = DialogEvent::Kind;
  struct Way {
    const char* name;
    std::function<void()> set_up, take;
  };
  const Way ways[] = {
      {"a key", [&] { on(kMessageKeyDown); },
       [&] { QTest::keyClick(test_.content(), Qt::Key_Right); }},
      {"a press", [&] { on(kMessageButtonDown); },
       [&] { QTest::mouseClick(test_.content(), Qt::LeftButton); }},
      {"a paint", [&] { on(kMessagePaint); }, [&] { test_.content()->repaint(); }},
      {"a posted message", [&] { on(kMessageRefresh); },
       [&] {
         window.post({kMessageRefresh, 0, {}, 0});
       }},
      {"a timer", [&] { on(kMessageTimer); }, [&] { window.start_timer(3, 1); }},
      {"a resize", [&] { on(kMessageSettingChange); },
       [&] { test_.window->shell()->setFixedSize(300, 200 + int(told_.size())); }},
      {"a close", [&] { on(kMessageClose); }, [&] { window.shell()->close(); }},
      {"a first paint", [&] { window.on_first_paint = [&] { fail(); }; },
       [&] { window.note_first_paint(); }},
      {"the worker",
       [&] {
         test_.recorder.on_message = [&](const Message& message) {
           if (message.id == kMessageDrawingFailed) worker.rethrow_failure();
           return false;
         };
       },
       [&] { worker.request([&](auto&&...) -> bool { fail(); }); }},
      {"files handed over", [] {},
       [&] { callers.emplace_back([&] { SingleInstance(folder.path()).join({"/tmp/a.ics"}); }); }},
      {"a dialog's button", [&] { dialog = dialogs.open_modeless(form(), *this); },
       [&] { on_event(Event::command), QTest::mouseClick(control(kButton), Qt::LeftButton); }},
      {"a dialog's timer", [] {}, [&] { on_event(Event::timer), dialog->set_timer(1, 1); }},
      {"a drawn control", [] {}, [&] { on_event(Event::paint), control(kDrawn)->repaint(); }},
      {"a row's key", [] {},
       [&] { on_event(Event::key), QTest::keyClick(control(kRows), Qt::Key_Return); }},
  };
  for (const Way& way : ways) {
    SCOPED_TRACE(way.name);
    way_ = way.name;
    told_.clear(), logged_.clear();
    way.set_up();
    way.take();
    EXPECT_TRUE(wait_until([&] { return !told_.empty(); }));
    way.take();
    settle();
    ASSERT_EQ(told_, std::vector<std::string>{"Something in Orvello went wrong: " + way_ +
                                              ". What was saved is safe."});
    EXPECT_EQ(logged_, told_);
    EXPECT_EQ(application_.uncaught(), 0);
    window.stop_timer(3);
    test_.recorder.on_message = nullptr;
    bad_event_.reset();
    window.post({kMessageRefresh, 77, {}, 0});
    EXPECT_TRUE(wait_until([&] {
      const auto later = test_.recorder.of(kMessageRefresh);
      return !later.empty() && later.back().wparam == 77;
    })) << "it goes on";
    test_.recorder.messages.clear();
    if (dialog) dialog->set_timer(1, 0);
  }
}

TEST_F(Callbacks, AModalDialogStaysUntilItIsClosed) {
  QtDialogs dialogs(*test_.window);
  way_ = "in a modal dialog";
  on_event(DialogEvent::Kind::command);
  QTimer::singleShot(50, [&] {
    QTest::mouseClick(control(kButton), Qt::LeftButton);
    EXPECT_TRUE(wait_until([&] { return !told_.empty(); }));
    EXPECT_NE(control(kButton), nullptr);
    bad_event_.reset();
    test_.window->shell()->close();
  });
  EXPECT_EQ(dialogs.run_modal(form(), *this), 0);
  EXPECT_EQ(told_.size(), 1u);
}

TEST_F(Callbacks, WithoutMemoryItEndsWithASentence) {
  test_.recorder.on_message = [](const Message& message) {
    if (message.id == kMessageTimer) throw std::bad_alloc();
    return false;
  };
  test_.window->start_timer(5, 1);
  EXPECT_EQ(test_.window->run(), 1);
  EXPECT_EQ(told_, std::vector<std::string>{
                       "There is not enough memory to go on. What was saved is safe."});
  test_.window->stop_timer(5);
  EXPECT_FALSE(application_.guard([] { throw 7; })) << "what a start throws ends it";
  EXPECT_EQ(told_.back(), "Orvello cannot go on: an unknown fault. What was saved is safe.");
}

}  // namespace
}  // namespace orvello
