// A vCard as a contact, and back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "exchange/card_lines.h"
#include "ports/calendar_store.h"

namespace orvello {

// Without an oid. The name is N, else FN as a first name; up to three addresses of e-mail,
// preferred ones first. Filed as "Last, First Middle", else as FN, nickname, company, address or
// telephone. Nothing of a card that says none of these.
std::optional<StoreContact> read_contact(const ParsedCard& card);

std::string card_uid(const ParsedCard& card);  // empty where it has none
// What tells a contact without a UID from others: its names, company and first address.
std::string made_up_card_uid(const StoreContact& contact);

// The card with what the contact says otherwise than the kept text; without a text a new one. The
// kept version stays, as what it says would need other words in another one.
std::string card_of(const StoreContact& contact, std::string_view uid, std::string_view kept);

}  // namespace orvello
