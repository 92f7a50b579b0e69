#include <iconv.h>

#include <cerrno>

#include "exchange/charset_conversion.h"

namespace orvello {
namespace {

class IconvConversion : public CharsetConversion {
 public:
  explicit IconvConversion(iconv_t conversion) : conversion_(conversion) {}
  ~IconvConversion() override { ::iconv_close(conversion_); }
  IconvConversion(const IconvConversion&) = delete;
  IconvConversion& operator=(const IconvConversion&) = delete;

  Taken convert(std::string_view bytes, std::string& utf8) override {
    char* from = const_cast<char*>(bytes.data());  // iconv's way to say "read only"
    std::size_t left = bytes.size();
    bool unfinished = false;
    while (left > 0) {
      char buffer[512];
      char* to = buffer;
      std::size_t room = sizeof buffer;
      const std::size_t done = ::iconv(conversion_, &from, &left, &to, &room);
      const int error = errno;
      utf8.append(buffer, sizeof buffer - room);
      if (done != static_cast<std::size_t>(-1) || error == E2BIG) continue;
      unfinished = error == EINVAL;
      break;
    }
    return {bytes.size() - left, unfinished};
  }
  void finish() override { ::iconv(conversion_, nullptr, nullptr, nullptr, nullptr); }

 private:
  iconv_t conversion_;
};

}  // namespace

std::unique_ptr<CharsetConversion> CharsetConversion::of(const std::string& name) {
  const iconv_t opened = ::iconv_open("UTF-8", name.c_str());
  if (opened == reinterpret_cast<iconv_t>(-1)) return nullptr;
  return std::make_unique<IconvConversion>(opened);
}

}  // namespace orvello
