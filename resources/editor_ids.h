// Controls of the appointment editor and of its question about series.
#pragma once

namespace orvello {

inline constexpr int kDialogEditor = 116;
inline constexpr int kDialogSeriesQuestion = 148;

// The editor's form is one step of its dialog, the notes are the other.
inline constexpr int kEditorFormStep = 1;
inline constexpr int kEditorNotesStep = 2;

inline constexpr int kEditorOk = 1000;
inline constexpr int kEditorCancel = 1029;
inline constexpr int kEditorNotes = 1042;  // shows the notes
inline constexpr int kEditorPrivate = 1051;

// A line, and the control that edits it in the same place.
inline constexpr int kLineSubject = 1052, kEditSubject = 1030;
inline constexpr int kLineLocation = 1110, kEditLocation = 1031;
inline constexpr int kLineStartTime = 1111, kEditStartTime = 1045;
inline constexpr int kLineEndTime = 1112, kEditEndTime = 1047;
inline constexpr int kLineOccurs = 1113, kEditOccurs = 1035;
inline constexpr int kLineAmount = 1114, kEditAmount = 1046;
inline constexpr int kLineUnit = 1115, kEditUnit = 1041;
inline constexpr int kLineCategories = 1116;  // these two open the chooser
inline constexpr int kLineAttendees = 1117;
inline constexpr int kLineStatus = 1118, kEditStatus = 1039;

inline constexpr int kStartDate = 1043;
inline constexpr int kEndDate = 1044;
inline constexpr int kEditorAllDay = 1049;
inline constexpr int kEditorRemind = 1050;
// In the place of the times of what recurs all day.
inline constexpr int kAllDayStart = 1125;
inline constexpr int kAllDayEnd = 1126;

inline constexpr int kLabelReminder = 1071;
inline constexpr int kLabelSubject = 1082;
inline constexpr int kLabelLocation = 1083;
inline constexpr int kLabelStart = 1119;
inline constexpr int kLabelEnd = 1120;
inline constexpr int kLabelOccurs = 1121;
inline constexpr int kLabelCategories = 1122;
inline constexpr int kLabelAttendees = 1123;
inline constexpr int kLabelStatus = 1124;

// Of the question. Its results are these, and 0 for none.
inline constexpr int kQuestionLabel = 313;
inline constexpr int kChooseOccurrence = 1;
inline constexpr int kChooseSeries = 4;
inline constexpr int kChooseFollowing = 3;

}  // namespace orvello
