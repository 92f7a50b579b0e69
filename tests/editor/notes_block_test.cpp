#include "editor/notes_block.h"

#include <gtest/gtest.h>

#include <random>

#include "editor/block_bytes.h"

namespace orvello {
namespace {

constexpr std::string_view kBlockMark("OVN\x01", 4);

NotesContent rich_page() {
  NotesContent page;
  page.text = u"Молоко\nbread \U0001F4C5 and\n";
  page.runs = {{0, 7, {false, false, false, true}}, {13, 2, {true, true, true, false}}};
  page.strokes = {{kBlack, 2, {{10, 10.125f, 1}, {30, 3.5f, 0}}},
                  {rgb(200, 30, 7), 0.5f, {{-4, -0.25f, 1}}},
                  {kBlack, 2, {{0, 0, 1}, {300, 2000, 1}, {-20, 1, 1}}}};
  page.width = 226.5f;
  return page;
}

std::string sealed(void (*fill)(BlockWriter&)) {
  BlockWriter out(kBlockMark);
  fill(out);
  return std::move(out).sealed();
}

TEST(NotesBlock, KeepsTextStylesAndStrokesInFewBytes) {
  const NotesContent page = rich_page();
  const std::string block = notes_block(page);
  EXPECT_EQ(read_notes_block(block), page);
  EXPECT_EQ(block.substr(0, 4), kBlockMark);
  EXPECT_EQ(crc32("123456789"), 0xCBF43926u) << "what others compute";

  NotesContent plain;
  plain.text = u"Nothing but words";
  EXPECT_EQ(notes_block(plain), "") << "such notes are their text alone";
  plain.runs = {{3, 4, {}}, {90, 4, {true}}, {-9, 5, {true}}};
  plain.strokes = {{}};
  EXPECT_EQ(notes_block(plain), "") << "nor is what styles or draws nothing";

  // A page full of writing: 40 lines of 8 words, in points as a pen gives them.
  NotesContent full;
  for (int word = 0; word < 320; ++word) {
    NotesStroke stroke;
    for (int i = 0; i < 20; ++i)
      stroke.points.push_back({static_cast<float>(word % 8 * 28 + i * 1.25),
                               static_cast<float>(word / 8 * 24 + (i * 7 % 11)), 0.5f});
    full.strokes.push_back(stroke);
  }
  const std::size_t size = notes_block(full).size();
  EXPECT_LT(size, 320 * 20 * 4u);
  EXPECT_EQ(read_notes_block(notes_block(full))->strokes.size(), 320u);
}

TEST(NotesBlock, WhatNoPageHoldsIsBroughtIntoOne) {
  NotesContent page;
  page.text = u"abcdef";
  page.runs = {{1, 3, {true}}, {2, 4, {false, true}}, {5, 99, {false, false, true}}};
  const float none = std::numeric_limits<float>::quiet_NaN();
  const float far = std::numeric_limits<float>::infinity();
  page.strokes = {{kBlack, far, {{none, -far, none}, {1e30f, 5.06f, 7}}}};
  const auto read = read_notes_block(notes_block(page));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->runs, (std::vector<NotesRun>{{1, 3, {true}}, {4, 2, {false, true}}}));
  EXPECT_EQ(read->strokes[0].points, (std::vector<StrokePoint>{{0, 0, 0}, {32768, 5.0f, 1}}));
  EXPECT_EQ(notes_block(*read), notes_block(page)) << "what was read is written alike";
}

TEST(NotesBlock, ABlockThatIsNotWholeOrLiesIsNone) {
  const std::string block = notes_block(rich_page());
  for (std::size_t size = 0; size < block.size(); ++size)
    EXPECT_FALSE(read_notes_block(block.substr(0, size))) << size;
  EXPECT_FALSE(read_notes_block(block + '\0'));
  for (std::size_t i = 0; i < block.size(); ++i) {
    std::string other = block;
    other[i] = static_cast<char>(other[i] ^ 1);
    EXPECT_FALSE(read_notes_block(other)) << i;
  }
  EXPECT_FALSE(read_notes_block(std::string(3000, 'x')));
  EXPECT_FALSE(read_notes_block(sealed([](BlockWriter& out) {
    out.bytes("text");
    out.number(0);
    out.number(0);
    out.byte(0);
  }))) << "something more";

  // With a checksum that is right, and sizes that are not.
  const std::pair<const char*, void (*)(BlockWriter&)> lies[] = {
      {"text", [](BlockWriter& out) { out.number(1ull << 40); }},
      {"endless number",
       [](BlockWriter& out) {
         for (int i = 0; i < 3000; ++i) out.byte(0xFF);
       }},
      {"runs", [](BlockWriter& out) { out.bytes("abc"), out.number(1ull << 60); }},
      {"run too long",
       [](BlockWriter& out) {
         out.bytes("abc"), out.number(1);
         out.number(1), out.number(3), out.byte(1), out.number(0);
       }},
      {"run that comes round",
       [](BlockWriter& out) {
         out.bytes("abc"), out.number(1);
         out.number(1), out.number((1ull << 62) - 1), out.byte(1), out.number(0);
       }},
      {"unknown style",
       [](BlockWriter& out) {
         out.bytes("abc"), out.number(1);
         out.number(0), out.number(1), out.byte(16), out.number(0);
       }},
      {"strokes",
       [](BlockWriter& out) {
         out.bytes(""), out.number(0), out.number(1ull << 60), out.number(0);
       }},
      {"too wide",
       [](BlockWriter& out) {
         out.bytes(""), out.number(0), out.number(1), out.number(1 << 30);
         out.fixed(0, 3), out.number(16), out.byte(0), out.number(1), out.number(0), out.number(0);
       }},
      {"points",
       [](BlockWriter& out) {
         out.bytes(""), out.number(0), out.number(1), out.number(0);
         out.fixed(0, 3), out.number(16), out.byte(0), out.number(1ull << 60);
         for (int i = 0; i < 3000; ++i) out.byte(0);
       }},
      {"far away",
       [](BlockWriter& out) {
         out.bytes(""), out.number(0), out.number(1), out.number(0);
         out.fixed(0, 3), out.number(16), out.byte(0), out.number(1);
         out.signed_number(1ll << 61), out.signed_number(0);
       }},
  };
  for (const auto& [name, fill] : lies) EXPECT_FALSE(read_notes_block(sealed(fill))) << name;

  // Any bytes in a block: what is read is written alike, nothing else happens.
  std::mt19937 random(9);
  int read = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string bytes = block.substr(4, block.size() - 8);
    for (auto n = 1 + random() % 3; n > 0; --n)
      bytes[random() % bytes.size()] = static_cast<char>(random() % (random() % 2 ? 8 : 256));
    BlockWriter out(kBlockMark);
    for (const char byte : bytes) out.byte(static_cast<unsigned char>(byte));
    const auto page = read_notes_block(std::move(out).sealed());
    if (!page) continue;
    ++read;
    const std::string again = notes_block(*page);
    EXPECT_EQ(again.empty() ? page : read_notes_block(again), page);
  }
  EXPECT_GT(read, 2000);
}

}  // namespace
}  // namespace orvello
