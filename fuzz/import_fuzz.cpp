// A libFuzzer entry for import and export: clang++ -fsanitize=fuzzer,address with this file, the
// exchange, calendar and base folders and libical; tests/data/ics is a corpus to start from.
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <sstream>

#include "exchange/export.h"
#include "exchange/importer.h"
#include "hosts/headless/memory_store.h"
#include "tests/exchange/eastern_clock.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvello;
  const HeadlessClock clock = eastern_clock();
  MemoryStore store(clock);
  const auto import_bytes = [&clock](MemoryStore& into, const std::string& bytes) {
    Importer importer(into, clock, true);
    std::istringstream in(bytes);
    ImportCounts counts;
    ProblemList problems("fuzz");
    assert(importer.import_stream(in, counts, problems) && importer.finish());
  };
  import_bytes(store, std::string(reinterpret_cast<const char*>(data), size));
  const auto text = export_calendar(store, {}, {}, clock);
  assert(text);
  MemoryStore again(clock);
  import_bytes(again, *text);
  assert(again.contents().records.size() == store.contents().records.size());
  return 0;
}
