// All headless ports together.
#pragma once

#include <utility>

#include "hosts/headless/headless_dialogs.h"
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
  HeadlessHost() {
    window.locale = dialogs.locale = &locale;
    // The input panel takes its room from the window.
    input.panel_changed = [this, up = 0](int height) mutable {
      window.raise_panel(height - std::exchange(up, height));
    };
  }
  HeadlessHost(const HeadlessHost&) = delete;
  HeadlessHost& operator=(const HeadlessHost&) = delete;

  HeadlessClock clock;
  HeadlessLocale locale;
  MemoryRegistry registry;
  MemoryFiles files;
  MemoryRecordDatabases databases;
  HeadlessSurfaces surfaces;
  HeadlessWindow window;
  HeadlessMenuBar menu_bar{window};
  HeadlessBoxes boxes;
  HeadlessDialogs dialogs;
  MemoryStore store{clock};
  HeadlessInput input;
  HeadlessShell shell;

  Host host() {
    return {clock,    locale, registry, files, databases, surfaces, window,
            menu_bar, boxes,  dialogs,  store, input,     shell};
  }
};

}  // namespace orvello
