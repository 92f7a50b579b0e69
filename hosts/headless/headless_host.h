// All headless ports together.
#pragma once

#include "hosts/headless/headless_ports.h"
#include "hosts/headless/headless_surface.h"
#include "hosts/headless/headless_window.h"
#include "hosts/headless/memory_files.h"
#include "hosts/headless/memory_record_databases.h"
#include "hosts/headless/memory_registry.h"
#include "hosts/headless/memory_store.h"
#include "ports/host.h"

namespace orvello {

struct HeadlessHost {
  HeadlessClock clock;
  HeadlessLocale locale;
  MemoryRegistry registry;
  MemoryFiles files;
  MemoryRecordDatabases databases;
  HeadlessSurfaces surfaces;
  HeadlessWindow window;
  HeadlessMenuBar menu_bar;
  HeadlessBoxes boxes;
  HeadlessDialogs dialogs;
  MemoryStore store{clock};
  HeadlessInput input;

  Host host() {
    return {clock,  locale,   registry, files,   databases, surfaces,
            window, menu_bar, boxes,    dialogs, store,     input};
  }
};

}  // namespace orvello
