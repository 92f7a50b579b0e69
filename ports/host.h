// What a host gives the application: one reference a port.
#pragma once

#include "ports/calendar_store.h"
#include "ports/canvas.h"
#include "ports/clock.h"
#include "ports/device_shell.h"
#include "ports/dialog.h"
#include "ports/files.h"
#include "ports/input_methods.h"
#include "ports/locale.h"
#include "ports/main_window.h"
#include "ports/menu_bar.h"
#include "ports/message_box.h"
#include "ports/record_databases.h"
#include "ports/registry.h"

namespace orvello {

struct Host {
  Clock& clock;
  Locale& locale;
  Registry& registry;
  Files& files;
  RecordDatabases& databases;
  Surfaces& surfaces;
  MainWindow& window;
  MenuBar& menu_bar;
  MessageBoxes& boxes;
  Dialogs& dialogs;
  CalendarStore& store;
  InputMethods& input;
  DeviceShell& shell;
};

}  // namespace orvello
