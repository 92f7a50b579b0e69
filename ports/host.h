// What a host gives the application: one reference a port.
#pragma once

namespace orvello {

class Clock;
class Locale;
class Registry;
class Files;
class RecordDatabases;
class Surfaces;
class MainWindow;
class MenuBar;
class MessageBoxes;
class Dialogs;
class CalendarStore;
class InputMethods;

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
};

}  // namespace orvello
