#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "hosts/linux/device_path.h"
#include "hosts/linux/linux_files.h"
#include "hosts/shared/bitmap_file.h"
#include "hosts/shared/own_files.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

std::string dword(std::uint32_t value) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFF);
  return bytes;
}

// A bitmap file as an editor writes it: header, palette or masks, rows padded to four bytes.
std::string bitmap(int width, int height, int bits, const std::string& extra,
                   const std::string& rows, std::uint32_t compression = 0) {
  const std::string header = dword(40) + dword(static_cast<std::uint32_t>(width)) +
                             dword(static_cast<std::uint32_t>(height)) +
                             dword(1u | static_cast<std::uint32_t>(bits) << 16) +
                             dword(compression) + dword(0) + dword(0) + dword(0) + dword(0) +
                             dword(0);
  const auto offset = static_cast<std::uint32_t>(14 + header.size() + extra.size());
  return "BM" + dword(0) + dword(0) + dword(offset) + header + extra + rows;
}

const Image kTwoByTwo{2, 2, {rgb(255, 0, 0), kWhite, kMagenta, rgb(0, 0, 255)}};

std::string two_by_two() {
  const std::string lower("\xFF\x00\xFF\xFF\x00\x00\x00\x00", 8);
  const std::string upper("\x00\x00\xFF\xFF\xFF\xFF\x00\x00", 8);
  return bitmap(2, 2, 24, "", lower + upper);
}

TEST(BitmapFile, EveryDepthAndDirectionIsRead) {
  EXPECT_EQ(read_bitmap(two_by_two()), kTwoByTwo);
  const std::string upper("\x00\x00\xFF\xFF\xFF\xFF\x00\x00", 8);
  const std::string lower("\xFF\x00\xFF\xFF\x00\x00\x00\x00", 8);
  EXPECT_EQ(read_bitmap(bitmap(2, -2, 24, "", upper + lower)), kTwoByTwo);
  const std::string colors = dword(0x0000FF) + dword(0x00FF00);
  // Nine pixels of one bit: the rows fill up to four bytes.
  const auto one_bit = read_bitmap(bitmap(9, 1, 1, colors, std::string("\x40\x80\0\0", 4)));
  ASSERT_TRUE(one_bit);
  EXPECT_EQ(one_bit->at(1, 0), rgb(0, 255, 0));
  EXPECT_EQ(one_bit->at(8, 0), rgb(0, 255, 0));
  EXPECT_EQ(one_bit->at(2, 0), rgb(0, 0, 255));
  std::string palette = colors;
  for (int i = 2; i < 16; ++i) palette += dword(0x101010u * static_cast<std::uint32_t>(i));
  const auto four_bit = read_bitmap(bitmap(3, 1, 4, palette, std::string("\x1F\x00\0\0", 4)));
  ASSERT_TRUE(four_bit);
  EXPECT_EQ(four_bit->at(1, 0), rgb(0xF0, 0xF0, 0xF0));
  const auto narrow = read_bitmap(bitmap(1, 1, 16, "", dword(0x7C1F)));
  ASSERT_TRUE(narrow);
  EXPECT_EQ(narrow->at(0, 0), kMagenta) << "full channels are full, or nothing is transparent";
  const std::string masks = dword(0xF800) + dword(0x07E0) + dword(0x001F);
  const auto fields = read_bitmap(bitmap(1, 1, 16, masks, dword(0x07E0), 3));
  ASSERT_TRUE(fields);
  EXPECT_EQ(fields->at(0, 0), rgb(0, 255, 0));
}

TEST(BitmapFile, NoPartOfADamagedFileIsReadOrCrashesTheReader) {
  const std::string whole = two_by_two();
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(read_bitmap(whole.substr(0, length))) << length;
  EXPECT_FALSE(read_bitmap("GIF89a" + std::string(100, 'x')));
  EXPECT_FALSE(read_bitmap(bitmap(1 << 30, 1 << 30, 32, "", "")));
  EXPECT_FALSE(read_bitmap(bitmap(0, 5, 24, "", "")));
  EXPECT_FALSE(read_bitmap(bitmap(2, 2, 8, "", std::string(8, 'x'), 1))) << "compressed";
  EXPECT_FALSE(read_bitmap(bitmap(2, INT32_MIN, 24, "", "")));
  for (std::size_t place = 0; place < 54; ++place) {  // whatever a byte of the header says
    std::string changed = whole;
    changed[place] = '\xFF';
    const auto image = read_bitmap(changed);
    if (image) {
      EXPECT_EQ(image->pixels.size(), std::size_t(image->width) * std::size_t(image->height));
    }
  }
}

TEST(LinuxFiles, AreOrdinaryOnesUnderTheSystemsPaths) {
  ScratchFolder folder;
  LinuxFiles files({folder.path(), folder.path(), folder.path()});
  EXPECT_EQ(host_path(files.module_file_name()), folder / "orvello");
  EXPECT_FALSE(files.load_bitmap(device_path(folder.path()))) << "a folder";
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_FALSE(files.load_bitmap(device_path(folder / "pipe"))) << "would wait for ever";
  EXPECT_EQ(host_path(device_path("/a\\b/\xD0\xB9")), "/a\\b/\xD0\xB9");
  EXPECT_TRUE(files.append_diagnostic_line(u"first"));
  EXPECT_EQ(mode_of(folder / "diag.txt"), 0600u);
}

TEST(Paths, FollowTheEnvironmentAndIgnoreRelativeValues) {
  const VariableGuard home("HOME", "/users/ann"), data("XDG_DATA_HOME", "/d/"),
      config("XDG_CONFIG_HOME", "relative"), state("XDG_STATE_HOME", "");
  const auto paths = choose_paths(std::nullopt);
  ASSERT_TRUE(paths);
  EXPECT_EQ(paths->data, "/d/orvello");
  EXPECT_EQ(paths->config, "/users/ann/.config/orvello");
  EXPECT_EQ(paths->state, "/users/ann/.local/state/orvello");
  const auto one = choose_paths("/tmp/x/");
  ASSERT_TRUE(one);
  EXPECT_EQ(one->data, "/tmp/x");
  EXPECT_EQ(one->state, one->data);
  EXPECT_EQ(choose_paths("x")->config.front(), '/') << "later changes of folder do not matter";
  EXPECT_FALSE(choose_paths(""));
}

TEST(Paths, FoldersAreMadeForTheOwnerAndAnUnusableOneIsNamed) {
  ScratchFolder folder;
  const Paths paths{folder / "a/b/data", folder / "config", folder / "state"};
  ASSERT_TRUE(prepare_folders(paths));
  EXPECT_EQ(mode_of(folder / "a/b/data"), 0700u);
  EXPECT_EQ(mode_of(folder / "a"), 0700u);
  ::chmod((folder / "config").c_str(), 0755);
  EXPECT_TRUE(prepare_folders(paths));
  EXPECT_EQ(mode_of(folder / "config"), 0755u) << "an existing folder is left as it is";
  put_content(folder / "file", "");
  for (const std::string& bad : {folder / "file", folder / "file/below"}) {
    const auto refused = prepare_folders({bad, paths.config, paths.state});
    ASSERT_FALSE(refused);
    EXPECT_NE(refused.reason().find(bad), std::string::npos) << refused.reason();
  }
  if (::getuid() == 0) return;  // may write everywhere
  ::chmod((folder / "state").c_str(), 0500);
  const auto refused = prepare_folders(paths);
  ASSERT_FALSE(refused);
  EXPECT_NE(refused.reason().find(paths.state), std::string::npos) << refused.reason();
}

TEST(OwnFiles, AreKnownUnderEveryName) {
  ScratchFolder folder;
  const Paths paths{folder / "data", folder / "config", folder / "state"};
  ASSERT_TRUE(prepare_folders(paths));
  std::filesystem::create_directory(folder / "data/backups");
  std::filesystem::create_symlink(folder / "data", folder / "other way");
  put_content(folder / "data/calendar.db", "x");
  put_content(folder / "data/appointments.ics", "x");
  put_content(folder / "data/backups/calendar-2026-11-20.db", "x");
  put_content(folder / "config/registry", "x");
  std::filesystem::create_symlink(folder / "data/calendar.db", folder / "link.png");
  std::filesystem::create_hard_link(folder / "data/calendar.db", folder / "hard.png");
  std::filesystem::create_hard_link(folder / "data/backups/calendar-2026-11-20.db", folder / "b");
  for (const char* own :
       {"data/calendar.db", "data/./calendar.db", "data/../data/calendar.db", "other way/device.db",
        "data/calendar.db-journal", "data/settings.vol", "link.png", "hard.png", "b",
        "config/registry", "data/backups/anything", "other way/backups/x.ics", "state/diag.txt"})
    EXPECT_TRUE(is_own_file(paths, folder / own)) << own;
  for (const char* free : {"data/appointments.ics", "data/new.png", "config/month.png", "x.ics",
                           "no such folder/calendar.db", "data", "calendar.db"})
    EXPECT_FALSE(is_own_file(paths, folder / free)) << free;
}

}  // namespace
}  // namespace orvello
