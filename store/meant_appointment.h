// The appointment that a choice means: the item itself, one occurrence of it, or one and all that
// follow.
#pragma once

#include <memory>

#include "ports/message_box.h"
#include "store/appointment_form.h"
#include "store/store_session.h"

namespace orvello {

struct MeantAppointment {
  enum class Lack {
    none,
    item,                  // it is not there, or cannot be read, as the session's problem() tells
    pattern,               // cannot be read
    occurrence,            // is not there
    unreadable_occurrence  // or cannot be split off
  };
  std::unique_ptr<Appointment> item;
  std::unique_ptr<Appointment> part;  // null: the item is meant as a whole
  Lack lack = Lack::none;
  Appointment& meant() const { return part ? *part : *item; }
};

// For the choice's oid, which is not 0. An occurrence that was moved since the choice was made is
// found by the day that it had in its series, else by the one on which it was.
MeantAppointment meant_appointment(StoreSession& session, MessageBoxes& boxes,
                                   const EditorChoice& choice);

// Fills the form from it, but for the choice. Subject, location and attendees are cut to what a
// form shows; what is not changed there keeps the store's length. False when something could not be
// read.
bool fill_form(AllDayEnd all_day_end, const MeantAppointment& from, AppointmentForm& form);

// The attendees, of whom those that the form shows cut are as whole as the store has them.
std::vector<StoreRecipient> whole_recipients(const std::vector<StoreRecipient>& shown,
                                             const std::vector<StoreRecipient>& stored);

}  // namespace orvello
