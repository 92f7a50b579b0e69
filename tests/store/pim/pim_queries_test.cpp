// What the device's own store is asked for, and how it is heard of.
#include "hosts/headless/headless_ports.h"
#include "store/day_agenda.h"
#include "store/store_session.h"
#include "tests/appointments.h"
#include "views/period_query.h"

#include "files/system_files.h"
#include "store/pim/pim_store.h"
#include "tests/scratch.h"
#include "tests/store/pim/pim_server.h"

namespace orvello::test {
namespace {

bool every_profile(TextView) { return true; }

class PimQueries : public testing::Test {
 protected:
  void open(int generation, MakePimWindow make_window = {}) {
    standin();
    standin().set_generation(generation);
    store_ = std::make_unique<PimStore>(clock_, PimPlatform{generation, std::move(make_window)});
    session_ = std::make_unique<StoreSession>(*store_, boxes_);
  }
  static int asked(const wchar_t* property) { return standin().calls_of(property); }

  HeadlessClock clock_;
  HeadlessBoxes boxes_;
  std::unique_ptr<PimStore> store_;
  std::unique_ptr<StoreSession> session_;
};

TEST_F(PimQueries, ReadTheWantedPropertiesAlone) {
  open(2);
  ASSERT_TRUE(session_->Open(nullptr));
  standin().fill(400, 100);
  int before = standin().gets();
  const auto month = fetch_period([&] { return session_->CalendarItems(); },
                                  MonthGridRange(7, 2024, 1, 1), every_profile);
  ASSERT_TRUE(month);
  const int items = asked(L"Start");
  EXPECT_GE(items, static_cast<int>(month->items.size()));
  EXPECT_GT(items, 20);
  for (const wchar_t* name : {L"Subject", L"Location", L"Body", L"ReminderSet", L"BodyInk",
                              L"Sensitivity", L"ReminderMinutesBeforeStart"})
    EXPECT_EQ(asked(name), 0) << to_utf8(Text(name, name + lstrlenW(name)));
  EXPECT_LE(standin().gets() - before, 7 * items + 3);  // and what folder and application give
  before = asked(L"Start");
  const auto agenda =
      full_agenda(session_->CalendarItems().get(), Day(45474), SettingsRecord(), every_profile);
  ASSERT_FALSE(agenda.failed);
  const int rows = asked(L"Start") - before;
  for (const wchar_t* name : {L"Subject", L"Location", L"Body"})
    EXPECT_EQ(asked(name), rows) << to_utf8(Text(name, name + lstrlenW(name)));
  for (const wchar_t* name : {L"BodyInk", L"Sensitivity", L"Recipients"}) EXPECT_EQ(asked(name), 0);
}

TEST_F(PimQueries, AServerWithoutInkKeepsTheRest) {
  open(2);
  standin().fail_name(L"BodyInk", DISP_E_UNKNOWNNAME);
  ASSERT_TRUE(session_->Open(nullptr));
  AppointmentRecord record = one_hour({11, 21, 2026}, 9, u"Dentist");
  record.fields.body_ink = "ink";
  record.modified = UtcSeconds(1234567);
  for (int i = 0; i < 2; ++i) {
    record.oid = store_->put(record);
    ASSERT_NE(record.oid, 0) << store_->problem();
    const auto kept = store_->load(record.oid);
    ASSERT_TRUE(kept && *kept) << store_->problem();
    EXPECT_EQ((*kept)->fields.subject, u"Dentist");
    EXPECT_EQ((*kept)->fields.body_ink, "");
    EXPECT_EQ((*kept)->modified, record.modified) << "which the server has no place for";
  }
}

TEST_F(PimQueries, WhatCannotBeTakenBackIsSaid) {
  open(2);
  ASSERT_TRUE(session_->Open(nullptr));
  for (const bool fails : {false, true}) {
    ASSERT_TRUE(store_->begin());
    EXPECT_NE(store_->put(one_hour({11, 21, 2026}, 9, u"Dentist")), 0);
    standin().fail_name(L"Delete", fails ? E_FAIL : S_OK);
    store_->rollback();
    EXPECT_EQ(standin().items(), fails ? 1 : 0);
    EXPECT_EQ(store_->problem(),
              fails ? "The device's calendar store could not be brought back to what it was." : "");
  }
}

TEST_F(PimQueries, AreGivenUpBetweenTwoItems) {
  open(3);
  ASSERT_TRUE(session_->Open(nullptr));
  standin().fill(60, 0);
  const auto items = session_->CalendarItems();
  int looks = 0;
  items->stop_when([&] { return ++looks > 5; });
  const int before = asked(L"FindNext");
  EXPECT_FALSE(each_item(*items, u"[Start] >= <40000", [](const StoreItem&) {}));
  EXPECT_TRUE(items->failed() && items->given_up());
  EXPECT_LE(asked(L"FindNext") - before, 5);
}

// A window of messages alone, as a host gives one.
class ToldWindow : public PimWindow {
 public:
  explicit ToldWindow(std::function<void(std::uint32_t)> told) : told_(std::move(told)) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = answer;
    kind.lpszClassName = L"PimToldWindow";
    RegisterClassW(&kind);
    window_ = CreateWindowExW(0, kind.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                              nullptr, nullptr);
    EXPECT_TRUE(window_);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  ~ToldWindow() override { DestroyWindow(window_); }
  std::intptr_t handle() const override { return reinterpret_cast<std::intptr_t>(window_); }
  void post(std::uint32_t message) override { PostMessageW(window_, message, 0, 0); }

 private:
  static LRESULT CALLBACK answer(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto* const self = reinterpret_cast<ToldWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message < WM_APP || !self) return DefWindowProcW(window, message, wparam, lparam);
    self->told_(message);
    return 0;
  }

  std::function<void(std::uint32_t)> told_;
  HWND window_ = nullptr;
};

struct ChangesHeard : StoreListener {
  void store_changed(std::uint32_t notification) override { heard.push_back(notification); }
  std::vector<std::uint32_t> heard;
};

using Heard = std::vector<std::uint32_t>;

Heard after_messages(ChangesHeard& listener) {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  return std::exchange(listener.heard, {});
}

TEST_F(PimQueries, ChangesAreHeardFromTheMessageLoop) {
  for (const int generation : {2, 3}) {
    SCOPED_TRACE(generation);
    standin().reset();
    ChangesHeard listener, notified;
    open(generation, [](auto told) { return std::make_unique<ToldWindow>(std::move(told)); });
    ASSERT_TRUE(session_->Open(&listener));
    const auto make = [&] {
      const auto item = session_->CreateAppointment();
      EXPECT_TRUE(item && item->save());
      return item ? item->oid() : 0;
    };
    // The newer generation is silent until it is asked to tell.
    const std::int32_t oid = make();
    EXPECT_EQ(after_messages(listener), generation == 2 ? Heard{0x8100} : Heard{});
    ChangesHeard& told = generation == 2 ? listener : notified;
    if (generation == 3) {
      ASSERT_TRUE(session_->OpenNotify(&notified));
    }
    standin().rename_elsewhere(oid, L"Elsewhere");
    standin().rename_elsewhere(oid, L"Again");
    EXPECT_EQ(after_messages(told), Heard{0x8107});
    EXPECT_TRUE(session_->ItemFromOid(oid)->remove());
    EXPECT_EQ(after_messages(told), Heard{0x8101});
    session_->CloseNotify();
    session_->Close();
    session_.reset();
    store_.reset();
  }
}

// Of a calendar that comes again, in another process: what it made is met, and nothing else.
TEST_F(PimQueries, UidsAreMetAgainAfterARestart) {
  const ScratchFolder folder;
  standin();
  AppointmentRecord record;
  record.uid = "met@test";
  record.fields.subject = u"Met";
  record.start = midnight_of(Day(46202));
  record.end = record.start + 3600;
  std::int32_t oid = 0;
  const auto start_again = [&](const char* file) {
    session_.reset();
    store_ = std::make_unique<PimStore>(clock_, PimPlatform{2, {}, folder / file});
    session_ = std::make_unique<StoreSession>(*store_, boxes_);
    return session_->Open(nullptr);
  };
  ASSERT_TRUE(start_again("device.uids"));
  ASSERT_TRUE(store_->all_or_nothing([&] { return (oid = store_->put(record)) != 0; }));
  ASSERT_TRUE(start_again("device.uids"));
  EXPECT_EQ(*store_->oid_of_uid("met@test"), oid);
  EXPECT_EQ((*store_->load(oid))->uid, "met@test");
  EXPECT_EQ(store_->put(record), 0) << "there is one of that UID";
  record.uid = "again@test";
  // Where they cannot be kept, nothing is: it would come twice.
  ASSERT_TRUE(make_folder(folder / "none"));
  ASSERT_TRUE(start_again("none"));
  const auto before = standin().fingerprint();
  EXPECT_FALSE(store_->all_or_nothing([&] { return store_->put(record) != 0; }));
  EXPECT_NE(store_->problem().find("none"), std::string::npos) << store_->problem();
  EXPECT_EQ(standin().fingerprint(), before);
  EXPECT_FALSE(store_->oid_of_uid("met@test"));
  session_.reset();
  store_.reset();
}

// Labels of a folder: its own property where the platform has it, else those of its items.
TEST_F(PimQueries, FoldersTellTheirLabels) {
  for (const int generation : {2, 3}) {
    SCOPED_TRACE(generation);
    standin().reset();
    open(generation);
    ASSERT_TRUE(session_->Open(nullptr));
    standin().add_contact(L"Ada", L"ada@test", L"Friends");
    EXPECT_EQ(session_->folder(kFolderContacts)->category_text(), u"Friends");
    const auto contacts = session_->folder(kFolderContacts)->contacts();
    ASSERT_TRUE(contacts && contacts->size() == 1);
    EXPECT_EQ(contacts->front().email[0], u"ada@test");
    session_.reset();
    store_.reset();
  }
}

}  // namespace
}  // namespace orvello::test
