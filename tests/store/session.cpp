#include <gtest/gtest.h>

#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_store.h"
#include "store/store_session.h"
#include "store/unavailable_store.h"

namespace orvello {
namespace {

class Session : public testing::Test {
 protected:
  using Registration = CalendarStore::Registration;
  using Strings = std::vector<std::string>;
  HeadlessClock clock;
  MemoryStore store{clock};
  HeadlessBoxes boxes;
  StoreSession session{store, boxes};

  // The boxes since the last look, none of which was the main window's.
  Strings shown() {
    Strings texts;
    for (const ShownBox& box : boxes.shown) {
      texts.push_back(to_utf8(box.caption + u"|" + box.text));
      EXPECT_FALSE(box.owned);
    }
    boxes.shown.clear();
    EXPECT_EQ(boxes.beeps, 0);
    return texts;
  }
  // Opening fails with these boxes and leaves the session closed.
  void fails_with(const Strings& expected) {
    EXPECT_FALSE(session.Open(nullptr));
    EXPECT_EQ(shown(), expected);
    EXPECT_FALSE(session.logged_on());
    EXPECT_FALSE(session.app());
    EXPECT_FALSE(session.CalendarItems());
    EXPECT_FALSE(session.ItemFromOid(1));
  }
};

constexpr char kNoInstance[] =
    "|CoCreateInstance failed. See the 'Troubleshooting' section of the user guide.";
constexpr char kNoRegistration[] =
    "|RegisterFile failed. See the 'Troubleshooting' section of the user guide.";

TEST_F(Session, EachStepFailsWithItsMessage) {
  store.faults.initialize = true;
  fails_with({"Error|Error in call to CoInitializeEx"});
  store.faults.initialize = false;
  store.faults.logon = true;
  fails_with({"Error|Failure to logon to app object."});
  store.faults.reason = "calendar.db is damaged.";
  fails_with({"Error|Failure to logon to app object.\ncalendar.db is damaged."});
  store.faults = {};
  store.faults.folder = true;
  const int before = store.applications_created;
  fails_with({"Error|Failure to Obtain Calendar Folder"});
  EXPECT_EQ(store.applications_created, before + 1);
  store.faults = {};
  EXPECT_TRUE(session.Open(nullptr)) << "from scratch";
}

TEST_F(Session, OneRegistrationAndOneMoreTry) {
  store.faults.create_application = 1;
  EXPECT_TRUE(session.Open(nullptr));
  EXPECT_EQ(store.registrations, 1);
  session.Close();
  store.faults.create_application = 2;
  fails_with({kNoInstance});
  EXPECT_EQ(store.registrations, 2);
  EXPECT_EQ(store.faults.create_application, 0) << "no third try";

  const std::pair<Registration, const char*> cases[] = {
      {Registration::library_missing, "|RegisterFile: (A) Failed to register pimstore.dll"},
      {Registration::entry_missing, "|RegisterFile: DllRegisterServer is NULL"},
      {Registration::call_failed, "|DllRegisterServer call failed"}};
  for (const auto& [registration, text] : cases) {
    store.faults.create_application = 2;
    store.faults.registration = registration;
    fails_with({text, kNoRegistration});
    EXPECT_EQ(store.faults.create_application, 1) << "not tried again";
  }
}

TEST_F(Session, TheNotifySessionOutlivesReconnectsAndShowsNothing) {
  struct Listener : StoreListener {
    void store_changed(std::uint32_t) override { ++heard; }
    int heard = 0;
  } listener;
  store.set_posts_unasked(false);
  store.faults.create_application = 1;
  EXPECT_FALSE(session.OpenNotify(&listener));
  store.faults.logon = true;
  EXPECT_FALSE(session.OpenNotify(&listener));
  store.faults = {};
  ASSERT_TRUE(session.OpenNotify(&listener));
  ASSERT_TRUE(session.Open(&listener));
  session.Close();
  ASSERT_TRUE(session.Open(&listener));
  EXPECT_TRUE(session.CreateAppointment()->save());
  store.poll();
  EXPECT_EQ(listener.heard, 1);
  session.CloseNotify();
  session.CreateAppointment()->save();
  store.poll();
  EXPECT_EQ(listener.heard, 1);
  EXPECT_EQ(shown(), Strings());
}

// Whatever fails in between and however often a session is closed, the store is let go as often as
// it was made ready, and never while a session holds it.
TEST_F(Session, IsMadeReadyAndLetGoInTurn) {
  struct Counted : MemoryStore {
    using MemoryStore::MemoryStore;
    void uninitialize() override {
      MemoryStore::uninitialize();
      EXPECT_GE(initialized, 0);
    }
  } counted{clock};
  {
    StoreSession one(counted, boxes);
    for (const int failing : {0, 1, 2, 3, 0}) {
      counted.faults.create_application = failing == 1 ? 2 : 0;
      counted.faults.logon = failing == 2;
      counted.faults.folder = failing == 3;
      one.Close();  // as a reconnect does
      const int made = counted.applications_created;
      EXPECT_EQ(one.Open(nullptr), failing == 0);
      if (failing == 0) {
        EXPECT_TRUE(one.Open(nullptr) && one.CalendarItems());
        EXPECT_EQ(counted.applications_created, made + 1) << "an open one stays";
      }
      EXPECT_EQ(counted.initialized, 1);
      if (failing != 2) continue;
      EXPECT_FALSE(one.OpenNotify(nullptr));
      EXPECT_FALSE(one.OpenNotify(nullptr));
      EXPECT_EQ(counted.initialized, 2);
      one.CloseNotify();
      one.CloseNotify();
    }
    EXPECT_TRUE(one.OpenNotify(nullptr));
    one.Close();
    one.Close();
    EXPECT_EQ(counted.initialized, 1) << "the notify session's";
  }
  EXPECT_EQ(counted.initialized, 0) << "both end with the session, whatever was left open";
}

TEST_F(Session, BeamingNeedsTheInfraredFolder) {
  ASSERT_TRUE(session.Open(nullptr));
  auto item = session.CreateAppointment();
  ASSERT_TRUE(item->save());
  EXPECT_TRUE(session.BeamToInfrared(*item));
  EXPECT_EQ(store.beamed.size(), 1u);
  store.faults.folder = true;
  EXPECT_FALSE(session.BeamToInfrared(*item));
}

TEST_F(Session, AStoreThatCannotBeOpenedSaysWhy) {
  UnavailableStore missing("calendar.db was written by a newer version.");
  StoreSession broken(missing, boxes);
  EXPECT_FALSE(broken.Open(nullptr));
  EXPECT_EQ(shown(), Strings{"Error|Failure to logon to app object.\n"
                             "calendar.db was written by a newer version."});
}

}  // namespace
}  // namespace orvello
