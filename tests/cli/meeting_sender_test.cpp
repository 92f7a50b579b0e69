// Who sends a meeting request, and in which order it is kept and leaves.
#include "cli/meeting_sender.h"

#include <gtest/gtest.h>

#include "exchange/calendar_keys.h"
#include "hosts/headless/headless_dialogs.h"
#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_registry.h"
#include "hosts/headless/memory_store.h"
#include "resources/ids.h"
#include "settings/registry_access.h"

namespace orvello {
namespace {

class MeetingSenderTest : public ::testing::Test {
 protected:
  MeetingSenderTest() {
    record.uid = "m";
    record.start = LocalSeconds(4000000000);
    record.end = record.start + 3600;
    record.recipients = {{u"Ann", u"ann@x.org"}};
    dialogs.person = [this](HeadlessDialog& dialog) {
      EXPECT_EQ(dialog.text(kControlOrganizerName), identity.name);
      dialog.type(kControlOrganizerName, u"Bob");
      dialog.type(kControlOrganizerAddress, u"no address");
      dialog.press(kControlOk);
      EXPECT_EQ(boxes.shown.size(), 1u) << "it stays open";
      dialog.type(kControlOrganizerAddress, u" bob@x.org ");
      dialog.press(kControlOk);
    };
  }
  SendResult send() {
    const MeetingHost host{
        store,
        clock,
        registry,
        dialogs,
        boxes,
        Language::english,
        [this] { return identity; },
        [this](const MeetingRequest& request, const AppointmentRecord&,
               const StoreRecipient& organizer) -> RecordCalendarStore::Sending {
          const auto& kept = store.contents().foreign;
          EXPECT_TRUE(!kept.empty() && kept.back().key == sent_key("m")) << "kept before it leaves";
          EXPECT_NE(request.calendar.find("METHOD:REQUEST"), std::string::npos);
          delivered.push_back(to_utf8(organizer.name + u" " + organizer.address));
          return {SendResult::sent, ""};
        }};
    const auto became = send_meeting(host, record);
    EXPECT_EQ(became.reason.empty(), became.result == SendResult::sent);
    return became.result;
  }

  HeadlessClock clock;
  HeadlessDialogs dialogs;
  HeadlessBoxes boxes;
  MemoryRegistry registry;
  MemoryStore store{clock};
  AppointmentRecord record;
  StoreRecipient identity{u"User", u""};
  std::vector<std::string> delivered;
};

TEST_F(MeetingSenderTest, IsAskedForOnlyWhereNobodySaysIt) {
  identity.address = u"user@x.org";
  EXPECT_EQ(send(), SendResult::sent);
  EXPECT_TRUE(dialogs.opened.empty());
  identity.address = u"user";
  EXPECT_EQ(send(), SendResult::sent);
  EXPECT_EQ(send(), SendResult::sent);
  EXPECT_EQ(dialogs.opened, std::vector<int>{kDialogOrganizer}) << "once";
  EXPECT_EQ(delivered,
            (std::vector<std::string>{"User user@x.org", "Bob bob@x.org", "Bob bob@x.org"}));
}

TEST_F(MeetingSenderTest, WithoutOneOrWithAStoreThatFailsNothingLeaves) {
  const auto person = dialogs.person;
  dialogs.person = [](HeadlessDialog& dialog) { dialog.press(kControlCancel); };
  EXPECT_EQ(send(), SendResult::no_way);
  dialogs.person = person;
  store.faults.save = true;
  store.faults.reason = "The disk is full.";
  EXPECT_EQ(send(), SendResult::failed);
  EXPECT_TRUE(delivered.empty());
  record.recipients[0].address.clear();
  store.faults.save = false;
  EXPECT_EQ(send(), SendResult::failed);
  EXPECT_TRUE(store.contents().foreign.empty());
}

}  // namespace
}  // namespace orvello
