// Meeting requests on their way: a sendmail command, the mail program, or a file.
#include "hosts/shared/meeting_delivery.h"

#include <gtest/gtest.h>

#include "exchange/base64.h"
#include "exchange/mail_message.h"
#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_registry.h"
#include "hosts/linux/command.h"
#include "hosts/linux/mail_identity.h"
#include "hosts/linux/outbox.h"
#include "settings/registry_access.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

class MeetingDeliveryTest : public ::testing::Test {
 protected:
  MeetingDeliveryTest() {
    record.fields.subject = u"Планёрка, отдел & Co";
    record.fields.start = 46200.5;
    record.fields.end = 46200.75;
  }
  std::string program(const std::string& text) {
    const std::string path = folder / "send mail";
    put_content(path, "#!/bin/sh\n" + text);
    fs::permissions(path, fs::perms::owner_all);
    return path;
  }
  void set_command(const std::string& command) {
    ASSERT_TRUE(EnsureSettingsKey(registry));
    WriteTextSetting(registry, u"sendmailcommand", to_utf16(command));
  }
  RecordCalendarStore::Sending deliver(milliseconds patience = milliseconds(5000)) {
    const MeetingDelivery ways{outbox, registry, boxes, clock, [this] { ++turns; }, patience};
    return ways.deliver(request, record, {u"Ich, Müller", u"me@x.org"});
  }

  ScratchFolder folder;
  Outbox outbox{folder / "outbox"};
  MemoryRegistry registry;
  HeadlessBoxes boxes;
  HeadlessClock clock;
  AppointmentRecord record;
  MeetingRequest request{"BEGIN:VCALENDAR\r\nMETHOD:REQUEST\r\n" + std::string(3000, 'x'),
                         {{u"Ann", u"ann@x.org"}, {u"", u"o'neil@x.org"}},
                         {}};
  int turns = 0;
};

TEST_F(MeetingDeliveryTest, ACommandGetsTheWholeMessage) {
  const std::string got = folder / "got";
  const std::string command = program("echo \"$1 $2 $3\" >'" + got + "'; cat >>'" + got + "'\n");
  set_command("'" + command + "' --account=\"my work\"");
  EXPECT_EQ(deliver().reason, "");
  const std::string mail = content_of(got);
  const std::string head = mail.substr(0, mail.find("\n\n"));
  const std::string mark = head.substr(head.find("boundary=\"") + 10, 18);
  EXPECT_EQ(head.substr(0, head.find("\nDate:")),
            "--account=my work -t -i\nFrom: =?UTF-8?B?SWNoLCBNw7xsbGVy?= <me@x.org>\n"
            "To: Ann <ann@x.org>,\n o'neil@x.org\nSubject: =?UTF-8?B?" +
                to_base64(to_utf8(record.fields.subject)) + "?=");
  EXPECT_NE(head.find("\nDate: Sat, 21 Nov 2026 10:00:00 +0000\n"), std::string::npos) << head;
  EXPECT_NE(head.find("\nContent-Type: multipart/alternative; boundary="), std::string::npos);
  const std::string type = "--" + mark +
                           "\nContent-Type: text/calendar; charset=UTF-8; "
                           "method=REQUEST\nContent-Transfer-Encoding: base64\n\n";
  const std::size_t part = mail.find(type);
  ASSERT_NE(part, std::string::npos) << mail;
  const std::string coded =
      mail.substr(part + type.size(), mail.rfind("--" + mark + "--") - part - type.size());
  EXPECT_EQ(from_base64(coded), request.calendar);
  EXPECT_EQ(encoded_words(u"Plain words"), "Plain words");
  EXPECT_EQ(encoded_words(u"a\r\nBcc: b@y").find('\n'), std::string::npos);
  for (const TextView longest : {TextView(u"жжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжжж")})
    EXPECT_EQ(encoded_words(longest).find("\n =?UTF-8?B?"), 72u) << "no half of a letter";
}

TEST_F(MeetingDeliveryTest, WhatGoesWrongIsSaid) {
  const std::string command = folder / "send mail";
  const auto reason_of = [&](const std::string& text, milliseconds patience = milliseconds(5000)) {
    program(text);
    set_command("\"" + command + "\"");
    const auto became = deliver(patience);
    EXPECT_EQ(became.result, SendResult::failed);
    return became.reason;
  };
  EXPECT_EQ(reason_of("echo >&2; echo no such host >&2; echo more >&2; exit 75\n"),
            command + " ended with 75: no such host");
  EXPECT_EQ(reason_of("exec >&- 2>&-; sleep 0.1; exit 3\n"), command + " ended with 3.");
  EXPECT_EQ(reason_of("kill -9 $$\n"), command + " was ended by signal 9.");
  turns = 0;
  EXPECT_EQ(reason_of("sleep 60 & sleep 60\n", milliseconds(300)),
            command + " did not end within 1 seconds and was ended.");
  EXPECT_GT(turns, 2) << "the window is drawn meanwhile";
  set_command("no-such-program --really");
  EXPECT_EQ(deliver().reason, "no-such-program could not be started: No such file or directory.");
  EXPECT_EQ(run_command({"true"}, std::string(1 << 20, 'x'), milliseconds(5000)), "")
      << "nobody has to read it";
}

TEST_F(MeetingDeliveryTest, WithoutACommandItIsTheMailProgramOrAFile) {
  const auto saved = deliver();
  EXPECT_EQ(saved.result, SendResult::no_way);
  EXPECT_EQ(saved.reason, "No mail program was started. The request is saved as " +
                              (folder / "outbox/Планёрка отдел Co.ics"));
  EXPECT_EQ(content_of(folder / "outbox/Планёрка отдел Co.ics"), request.calendar);
  const VariableGuard home("HOME", folder.path()), cache("XDG_CACHE_HOME", ""),
      path("PATH", folder / "bin:/usr/bin:/bin"), screen("DISPLAY", ":0");
  fs::create_directories(folder / "bin");
  put_content(folder / "bin/xdg-email",
              "#!/bin/sh\nprintf '%s|' \"$@\" >\"$HOME/part\"; mv \"$HOME/part\" \"$HOME/said\"\n");
  fs::permissions(folder / "bin/xdg-email", fs::perms::owner_all);
  outbox = Outbox("");
  record.fields.subject = u"x', attachment='/etc/passwd";
  EXPECT_EQ(deliver().result, SendResult::sent);
  for (int i = 0; i < 500 && !fs::exists(folder / "said"); ++i) ::usleep(10000);
  EXPECT_EQ(content_of(folder / "said"),
            "--utf8|--subject|x attachment etc passwd|--attach|" +
                (folder / ".cache/orvello/x attachment etc passwd.ics") + "|ann@x.org|");
  ASSERT_EQ(boxes.shown.size(), 1u);
  EXPECT_EQ(boxes.shown[0].text, u"The mail program was not told of o'neil@x.org. Add them there.");
}

TEST(MailIdentity, IsWhatMailProgramsTake) {
  struct Case {
    const char *email, *debian, *name, *address;
  };
  for (const Case& one :
       {Case{"\"Ann B.\" <ann@x.org>", "d@x.org", "Ann B.", "ann@x.org"},
        Case{"ann@x.org", "d@x.org", "Debian Name", "ann@x.org"},
        Case{"", " d@x.org", "Debian Name", "d@x.org"}, Case{"", "", "Debian Name", ""}}) {
    const VariableGuard email("EMAIL", one.email), debian("DEBEMAIL", one.debian),
        name("DEBFULLNAME", "Debian Name");
    const StoreRecipient person = mail_identity();
    EXPECT_EQ(to_utf8(person.name), one.name);
    EXPECT_EQ(to_utf8(person.address), one.address);
  }
}

}  // namespace
}  // namespace orvello
