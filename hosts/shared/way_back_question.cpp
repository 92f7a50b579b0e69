#include "hosts/shared/way_back_question.h"

#include "calendar/iso_date.h"
#include "files/system_files.h"
#include "hosts/shared/way_back.h"
#include "resources/strings.h"
#include "store/unavailable_store.h"

namespace orvello {
namespace {

Text answer_text(const Restored& restored, Language language) {
  Text text = restored.copy ? format(load_string(StringId::restored_copy, language),
                                     to_utf16(iso_text(restored.copy->day)))
                            : Text(load_string(StringId::restored_anew, language));
  if (!restored.kept.empty())
    text += format(load_string(StringId::restored_kept, language), to_utf16(restored.kept));
  if (!restored.saved.empty())
    text += format(load_string(StringId::restored_saved, language), restored.appointments,
                   to_utf16(restored.saved));
  if (!restored.saved_contacts.empty())
    text += format(load_string(StringId::restored_contacts, language),
                   to_utf16(restored.saved_contacts));
  return text;
}

}  // namespace

bool ask_for_way_back(ProgramSystem& system, const WindowParts& parts) {
  const auto copy =
      CalendarCopies(calendar_file(parts.paths)).newest_good(TodayTriple(parts.clock.local_time()));
  const auto registry = system.registry(parts.paths);
  const auto databases = system.databases(path_in(parts.paths.data, "device.db"));
  UnavailableStore store(parts.reason);
  const auto window = system.window(host_options(parts, false), *registry, *databases, store);
  MessageBoxes& boxes = window->host().boxes;
  const Language language = language_of(window->host().locale);
  const Text reason = to_utf16(parts.reason);
  const Text question = copy ? format(load_string(StringId::restore_question, language), reason,
                                      to_utf16(iso_text(copy->day)))
                             : format(load_string(StringId::rescue_question, language), reason);
  if (boxes.show(question, u"Error", BoxIcon::error, BoxButtons::yes_no) != BoxAnswer::yes)
    return false;
  const auto restored =
      restore_calendar(parts.paths, copy ? std::optional(copy->day) : std::nullopt, parts.clock);
  if (!restored) {
    boxes.show(to_utf16(restored.reason()), u"Error", BoxIcon::error);
    return false;
  }
  boxes.show(answer_text(*restored, language), u"Orvello");
  return true;
}

}  // namespace orvello
