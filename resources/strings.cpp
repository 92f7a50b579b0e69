#include "resources/strings.h"

namespace orvello {
namespace {

struct Row {
  StringId id;
  const char16_t* russian;
  const char16_t* english;
};

constexpr Row kStrings[] = {
    {StringId::new_appointment, u"Новое", u"New"},
    {StringId::options, u"Опции", u"Options"},
    {StringId::exit, u"Выход", u"Exit"},
    {StringId::popup, u"popup", u"popup"},
    {StringId::settings, u"Настройки", u"Settings"},
    {StringId::day_view, u"День", u"Day View"},
    {StringId::month_view, u"Месяц", u"Month View"},
    {StringId::year_view, u"Год", u"Year View"},
    {StringId::profiles, u"Профили", u"Profiles"},
    {StringId::all_profiles, u"Все", u"All"},
    {StringId::cut, u"Вырезать", u"Cut"},
    {StringId::copy, u"Копировать", u"Copy"},
    {StringId::paste, u"Вставить", u"Paste"},
    {StringId::beam, u"Передать", u"Beam"},
    {StringId::erase, u"Удалить", u"Delete"},
    {StringId::edit, u"Изменить", u"Edit"},
    {StringId::create, u"Создать", u"New"},
    {StringId::undo, u"Отменить действие", u"Undo"},
    {StringId::redo, u"Вернуть действие", u"Redo"},
    {StringId::move_to, u"Перенести на день...", u"Move to day..."},
    {StringId::today, u"Сегодня", u"Today"},
    {StringId::row_colors, u"Цвета строк", u"Row colours"},
    {StringId::choose_date, u"Выбор даты", u"Choose a date"},
    {StringId::delete_title, u"Удаление", u"Delete"},
    {StringId::delete_occurrence, u"Удалить это событие", u"Delete this occurrence"},
    {StringId::delete_series, u"Удалить серию", u"Delete the series"},
    {StringId::delete_following, u"Удалить это и все следующие",
     u"Delete this and all that follow"},
    {StringId::ok, u"ОК", u"OK"},
    {StringId::notes, u"Заметки", u"Notes"},
    {StringId::import_title, u"Импорт", u"Import"},
    {StringId::import_summary, u"Новых: %d, обновится: %d, будет пропущено: %d",
     u"New: %d, to update: %d, to skip: %d"},
    {StringId::import_file, u"%s: %d", u"%s: %d"},
    {StringId::import_ok, u"Импорт", u"Import"},
    {StringId::cancel, u"Отмена", u"Cancel"},
    {StringId::import_done, u"Импортировано: %d, обновлено: %d, пропущено: %d",
     u"%d imported, %d updated, %d skipped"},
    {StringId::import_failed, u"Импорт не выполнен: %s", u"Nothing was imported: %s"},
    {StringId::organizer_title, u"Приглашение", u"Meeting request"},
    {StringId::organizer_text,
     u"От чьего имени отправить приглашение? На этот адрес ответят участники.",
     u"Who sends the request? Attendees answer to this address."},
    {StringId::organizer_name, u"Имя:", u"Name:"},
    {StringId::organizer_address, u"Эл. почта:", u"E-mail:"},
    {StringId::calendar_unreadable, u"Календарь не читается.", u"The calendar cannot be read."},
    {StringId::shown_as_it_was, u"Показано прежнее: календарь не читается.",
     u"Shown as it was: the calendar cannot be read."},
    {StringId::read_again, u"Чтение повторяется само, пока не удастся.",
     u"Reading is tried again until it works."},
    {StringId::unreadable, u"Не читается", u"Cannot be read"},
    {StringId::restore_question, u"%s\n\nВосстановить копию от %s?",
     u"%s\n\nRestore the copy of %s?"},
    {StringId::rescue_question,
     u"%s\n\nКопий нет. Создать календарь заново из того, что ещё можно прочитать?",
     u"%s\n\nThere is no copy. Make a new calendar of what can still be read?"},
    {StringId::restored_copy, u"Восстановлена копия от %s.",
     u"The calendar is the copy of %s now."},
    {StringId::restored_anew, u"Календарь создан заново из того, что удалось прочитать.",
     u"The calendar is made anew of what could be read."},
    {StringId::restored_kept, u"\n\nПрежний файл сохранён: %s",
     u"\n\nThe file as it was is kept: %s"},
    {StringId::restored_saved, u"\n\nПрочитано записей: %d; они сохранены в файле %s",
     u"\n\nAppointments that could still be read of it: %d, saved in %s"},
    {StringId::restored_contacts, u"\n\nПрочитанные контакты сохранены в файле %s",
     u"\n\nContacts that could still be read of it are saved in %s"},
    {StringId::recurrence_rule_question,
     u"Событие повторяется по правилу, которого эта форма не показывает:\n\n%s\n\nЗаменить его?",
     u"This appointment recurs by a rule that this form cannot show:\n\n%s\n\nReplace it?"},
    {StringId::chooser_no_labels, u"Категорий пока нет", u"There are no categories yet"},
    {StringId::chooser_no_contacts, u"Нет контактов с адресами",
     u"There are no contacts with addresses"},
    {StringId::greeting_title, u"Добро пожаловать", u"Welcome to Orvello"},
    {StringId::greeting_import, u"Ваши события", u"Your appointments"},
    {StringId::greeting_import_text,
     u"«Новое» внизу создаёт событие. Файлы календаря (.ics) перетащите в это окно или откройте в "
     u"Orvello.",
     u"New, at the bottom, writes one. Drop calendar files (.ics) onto this window, or open them "
     u"with Orvello."},
    {StringId::greeting_month, u"Месяц", u"Month"},
    {StringId::greeting_month_text,
     u"Коснитесь дня, чтобы открыть его; удержите, чтобы увидеть список. Полоса вверху — другие "
     u"месяцы.",
     u"Tap a day to open it, hold it for its list. The strip at the top goes to other months."},
    {StringId::greeting_day, u"День", u"Day"},
    {StringId::greeting_day_text,
     u"Касание показывает заметки, второе открывает событие, удержание — меню. Проведите вбок, "
     u"чтобы перейти к соседнему дню.",
     u"A tap shows notes, a second one opens the appointment, a hold the menu. Drag sideways for "
     u"the day before or after."},
    {StringId::greeting_keys, u"Клавиши", u"Keys"},
    {StringId::greeting_keys_text,
     u"Стрелки ведут по дням, Enter открывает, Esc возвращает, Home — сегодня, N — новое событие, "
     u"Ctrl+1, 2, 3 — виды.",
     u"Arrows walk the days, Return opens, Esc goes back, Home is today, N writes a new "
     u"appointment, Ctrl+1, 2, 3 are the views."},
    {StringId::greeting_icons, u"Значки", u"Icons"},
    {StringId::greeting_icons_text,
     u"Note: To see the month view icons, you will need to assign icons to existing category "
     u"labels in the 'Options->Settings->Icons' screen",
     u"Note: To see the month view icons, you will need to assign icons to existing category "
     u"labels in the 'Options->Settings->Icons' screen"},
    {StringId::notes_pen, u"Перо", u"Pen"},
    {StringId::notes_eraser, u"Ластик", u"Eraser"},
    {StringId::notes_text, u"Текст", u"Text"},
    {StringId::notes_bold, u"Жирный", u"Bold"},
    {StringId::notes_italic, u"Курсив", u"Italic"},
    {StringId::notes_underline, u"Подчёркнутый", u"Underlined"},
    {StringId::notes_list, u"Список", u"List"},
    {StringId::notes_back, u"Назад к событию", u"Back to the appointment"},
    {StringId::greeting_ok, u"Начать", u"Start"},
    {StringId::editor_subject, u"Заголовок:", u"Subject:"},
    {StringId::editor_location, u"Место:", u"Location:"},
    {StringId::editor_start, u"Начало:", u"Starts:"},
    {StringId::editor_end, u"Конец:", u"Ends:"},
    {StringId::editor_occurs, u"Событие:", u"Occurs:"},
    {StringId::editor_all_day, u"На весь день", u"All day"},
    {StringId::editor_status, u"Статус:", u"Status:"},
    {StringId::editor_private, u"Приват", u"Private"},
    {StringId::editor_remind, u"Напомнить", u"Remind"},
    {StringId::editor_reminder, u"Напомин.:", u"Before:"},
    {StringId::editor_categories, u"Категории:", u"Categories:"},
    {StringId::editor_attendees, u"Люди:", u"People:"},
    {StringId::series_title, u"Серия событий", u"Recurring"},
    {StringId::series_question, u"Что изменить?", u"What do you want to change?"},
    {StringId::series_occurrence, u"Только это событие", u"Only this occurrence"},
    {StringId::series_following, u"Это и все следующие", u"This and all that follow"},
    {StringId::series_whole, u"Всю серию", u"The whole series"},
};

}  // namespace

Language language_of(const Locale& locale) {
  return locale.russian_resources() ? Language::russian : Language::english;
}

Text load_string(StringId id, Language language) {
  for (const Row& row : kStrings)
    if (row.id == id) return language == Language::russian ? row.russian : row.english;
  return {};
}

}  // namespace orvello
