#include "files/calendar_files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "files/system_files.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

namespace fs = std::filesystem;

TEST(CalendarFiles, OfAFolderAreThoseInItByName) {
  ScratchFolder folder;
  const std::string top = folder / "cal";
  fs::create_directories(top + "/sub/.hidden");
  for (const char* name : {"b.ICS", "a.vcf", "notes.txt", "sub/c.vcs", "sub/.hidden/d.ics", "ics"})
    put_content(top + "/" + name, "");
  std::error_code no_links_here;
  fs::create_directory_symlink(top, top + "/sub/round", no_links_here);
  const auto files = calendar_files({"missing.ics", top + "/sub/c.vcs", top + "/sub/.hidden"});
  ASSERT_TRUE(files) << files.reason();
  EXPECT_EQ(*files, (std::vector<std::string>{"missing.ics", top + "/sub/c.vcs",
                                              path_in(top + "/sub/.hidden", "d.ics")}));
  EXPECT_EQ(*calendar_files({top}),
            (std::vector<std::string>{path_in(top, "a.vcf"), path_in(top, "b.ICS"),
                                      path_in(path_in(top, "sub"), "c.vcs")}));
  fs::create_directory(top + "/empty");
  const auto none = calendar_files({top, top + "/empty"});
  EXPECT_EQ(none.reason(), top + "/empty holds no calendar and no contact files.");
}

}  // namespace
}  // namespace orvello
