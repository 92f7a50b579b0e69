// What every host's files must do.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "ports/files.h"

namespace orvello {

struct FilesDevice {
  virtual ~FilesDevice() = default;
  virtual Files& files() = 0;
  virtual void put(TextView path) = 0;                       // a file that is no bitmap
  virtual void put_bitmap(TextView path, const Image&) = 0;  // as an editor writes it
  virtual std::vector<Text> diagnostic_lines() = 0;
  virtual void fail_appending() = 0;  // from now on
};
using FilesCase = std::pair<const char*, std::function<std::unique_ptr<FilesDevice>()>>;
inline void PrintTo(const FilesCase& one, std::ostream* out) { *out << one.first; }

class FilesContract : public ::testing::TestWithParam<FilesCase> {
 protected:
  std::unique_ptr<FilesDevice> device = GetParam().second();
  Files& files = device->files();
};

TEST_P(FilesContract, LieBesideTheProgramUnderDevicePaths) {
  const Text module = files.module_file_name();
  ASSERT_EQ(module.front(), u'\\');
  const Text folder = module.substr(0, module.rfind(u'\\') + 1);
  const Image picture{2, 2, {rgb(255, 0, 0), kWhite, kMagenta, rgb(0, 0, 255)}};
  for (const TextView name : {u"icons.bmp", u"Дом.bmp"}) {
    EXPECT_FALSE(files.exists(folder + Text(name)));
    EXPECT_FALSE(files.load_bitmap(folder + Text(name)));
    device->put_bitmap(folder + Text(name), picture);
    EXPECT_TRUE(files.exists(folder + Text(name)));
    EXPECT_EQ(files.load_bitmap(folder + Text(name)), picture);
  }
  device->put(folder + u"settings.vol");
  EXPECT_TRUE(files.exists(folder + u"settings.vol"));
  EXPECT_FALSE(files.load_bitmap(folder + u"settings.vol"));
}

TEST_P(FilesContract, DiagnosticLinesAreAppendedOrItIsSaidThatTheyAreNot) {
  EXPECT_TRUE(files.append_diagnostic_line(u"first: день"));
  EXPECT_TRUE(files.append_diagnostic_line(u"second"));
  EXPECT_EQ(device->diagnostic_lines(), (std::vector<Text>{u"first: день", u"second"}));
  device->fail_appending();
  EXPECT_FALSE(files.append_diagnostic_line(u"third"));
}

}  // namespace orvello
