// What an operation on appointments needs of the program around it.
#pragma once

#include "ports/files.h"
#include "ports/main_window.h"
#include "ports/message_box.h"
#include "store/edit_history.h"
#include "store/store_session.h"

namespace orvello {

struct OperationContext {
  StoreSession& session;
  MessageBoxes& boxes;
  MainWindow& window;  // for its wait cursor and the refresh message
  Files& files;        // for its diagnostic log
  EditHistory& history;
};

}  // namespace orvello
