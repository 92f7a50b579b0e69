// Texts in other charsets, as the system writes them.
#pragma once

#include <gtest/gtest.h>

#include <string>

#ifdef _WIN32
#include <windows.h>
#else
#include <iconv.h>
#endif

namespace orvello {

#ifdef _WIN32
// Of one byte a character: "Windows-1251", "ISO-8859-5", "KOI8-R".
inline std::string in_charset(const std::string& utf8, const std::string& charset) {
  const std::string digits = charset.substr(charset.find_last_not_of("0123456789") + 1);
  const UINT number = static_cast<UINT>(std::atoi(digits.c_str()));
  const UINT page = number == 0 ? 20866u : number < 100 ? 28590u + number : number;
  const Text text = to_utf16(utf8);
  std::string bytes(text.size(), '\0');
  EXPECT_EQ(WideCharToMultiByte(page, 0, reinterpret_cast<const wchar_t*>(text.data()),
                                static_cast<int>(text.size()), bytes.data(),
                                static_cast<int>(bytes.size()), nullptr, nullptr),
            static_cast<int>(text.size()))
      << utf8;
  return bytes;
}
#else
inline std::string in_charset(std::string utf8, const char* charset) {
  std::string bytes(utf8.size() * 4, '\0');
  char *from = utf8.data(), *to = bytes.data();
  std::size_t left = utf8.size(), room = bytes.size();
  const iconv_t conversion = ::iconv_open(charset, "UTF-8");
  EXPECT_EQ(::iconv(conversion, &from, &left, &to, &room), 0u) << utf8;
  ::iconv(conversion, nullptr, nullptr, &to, &room);
  ::iconv_close(conversion);
  bytes.resize(bytes.size() - room);
  return bytes;
}
#endif

}  // namespace orvello
