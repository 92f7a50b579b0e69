#include "hosts/shared/draft_mail.h"

#include <algorithm>

#include "exchange/base64.h"
#include "exchange/mail_message.h"

namespace orvello {
namespace {

constexpr std::size_t kAttachmentLine = 76;

bool passes_in_head(const std::string& address) {
  const auto plain = [](unsigned char c) {
    return c > 0x20 && c < 0x7F &&
           std::string_view("()<>[]:;,\\\"").find(static_cast<char>(c)) == std::string_view::npos;
  };
  return address.find('@') != std::string::npos &&
         std::all_of(address.begin(), address.end(), plain);
}

std::string in_lines(const std::string& text) {
  std::string lines;
  for (std::size_t at = 0; at < text.size(); at += kAttachmentLine)
    lines += text.substr(at, kAttachmentLine) + "\r\n";
  return lines;
}

// What the calendar is sent for: "REQUEST", or empty.
std::string method_of(const std::string& calendar) {
  constexpr std::string_view kMethod = "\nMETHOD:";
  const std::size_t at = calendar.find(kMethod);
  if (at == std::string::npos) return {};
  const std::size_t begin = at + kMethod.size();
  return calendar.substr(begin, calendar.find_first_of("\r\n", begin) - begin);
}

}  // namespace

std::string draft_mail(TextView subject, const std::string& name, const std::string& calendar,
                       const std::vector<std::string>& addresses,
                       std::vector<std::string>& left_out) {
  std::string to;
  for (const std::string& address : addresses) {
    if (passes_in_head(address))
      to += (to.empty() ? "To: " : ",\r\n ") + address;
    else
      left_out.push_back(address);
  }
  // No line of base64 begins so.
  const std::string boundary = "----=_orvello_part";
  const std::string method = method_of(calendar);
  const std::string file = encoded_words(to_utf16(name + ".ics"));
  Text line(subject);
  std::replace_if(
      line.begin(), line.end(), [](char16_t c) { return c < 0x20; }, u' ');
  return "X-Unsent: 1\r\n" + (to.empty() ? to : to + "\r\n") + "Subject: " + encoded_words(line) +
         "\r\nMIME-Version: 1.0\r\nContent-Type: multipart/mixed; boundary=\"" + boundary +
         "\"\r\n\r\n--" + boundary + "\r\nContent-Type: text/plain; charset=utf-8\r\n\r\n\r\n--" +
         boundary + "\r\nContent-Type: text/calendar; charset=utf-8" +
         (method.empty() ? method : "; method=" + method) + "; name=\"" + file +
         "\"\r\nContent-Transfer-Encoding: base64\r\nContent-Disposition: attachment; filename=\"" +
         file + "\"\r\n\r\n" + in_lines(to_base64(calendar)) + "--" + boundary + "--\r\n";
}

}  // namespace orvello
